#pragma once

#include "Device/Device.h"

#include <QHash>

/// A device whose files are given by a test: for readers alone, without a file system.
class MemoryDevice final : public Device
{
public:
    explicit MemoryDevice(const QString& prefix = QStringLiteral("/Volumes/P"))
    {
        _prefix = prefix;
        _controlPath = prefix + QStringLiteral("/iPod_Control");
    }

    ~MemoryDevice() override { releaseReaders(); }

    void put(const QString& path, const QByteArray& content) { _files[path] = content; }

    using Device::read;
    bool fileExists(const QString& path) override { return _files.contains(path); }
    QByteArray read(const QString& path) override { return _files.value(path); }
    QByteArray read(const QString& path, quint32 offset, quint32 length) override
    {
        return _files.value(path).mid(offset, length);
    }

private:
    QHash<QString, QByteArray> _files;
};
