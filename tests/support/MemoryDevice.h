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

    Expected<FileInfo> info(const QString& path) override
    {
        if (!_files.contains(path))
            return missing();
        return FileInfo{FileInfo::Kind::File, _files.value(path).size()};
    }
    Expected<QByteArray> readFile(const QString& path) override
    {
        if (!_files.contains(path))
            return missing();
        return _files.value(path);
    }
    Expected<QByteArray> readPart(const QString& path, quint64 offset, quint64 length) override
    {
        return _files.value(path).mid(qsizetype(offset), qsizetype(length));
    }
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

private:
    static Failure missing() { return {Failure::Kind::Missing, QStringLiteral("missing"), {}}; }

    QHash<QString, QByteArray> _files;
};
