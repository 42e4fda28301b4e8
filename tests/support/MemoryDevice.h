#pragma once

#include "Device/Device.h"

#include <QFile>
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

    /// Gives the device a folder of books, as phones have one.
    void setBookPath(const QString& path) { _bookPath = path; }
    ~MemoryDevice() override { releaseReaders(); }

    void put(const QString& path, const QByteArray& content) { _files[path] = content; }

    using Device::read;
    bool fileExists(const QString& path) override { return _files.contains(path); }
    QByteArray read(const QString& path) override { return _files.value(path); }
    double getFileSize(const QString& path) override { return double(_files.value(path).size()); }
    CopyResult copyOut(const QString& from, const QString& to,
                       std::optional<int> /*progress*/) override
    {
        if (!fileExists(from))
            return {CopyResult::End::Missing, {}};
        QFile::remove(to); // a file that is emptied and written again waits for the disk
        QFile file(to);
        if (!file.open(QIODevice::WriteOnly) || file.write(_files.value(from)) < 0)
            return {CopyResult::End::Failed, file.errorString()};
        return {};
    }
    QByteArray read(const QString& path, quint32 offset, quint32 length) override
    {
        return _files.value(path).mid(offset, length);
    }

private:
    QHash<QString, QByteArray> _files;
};
