#pragma once

#include "Device/Device.h"
#include "support/MemoryDevice.h"

#include <QHash>
#include <QStringList>

/// A device of files in memory that fails where a test says so.
class FaultyDevice final : public Device
{
public:
    FaultyDevice()
    {
        _prefix = QStringLiteral("/Volumes/P");
        _controlPath = QStringLiteral("/Volumes/P/iPod_Control");
        _bookPath = QStringLiteral("/Books");
    }
    ~FaultyDevice() override { releaseReaders(); }

    void put(const QString& path, const QByteArray& content) { _files.put(path, content); }

    /// What `info` fails with, by the path; of folders, `list` too.
    QHash<QString, Failure> failures;
    /// How many bytes come of a file before its copy ends.
    QHash<QString, qsizetype> cuts;
    /// Names in folders.
    QHash<QString, QStringList> folders;
    QHash<QString, QStringList> files;
    std::optional<Failure> gone;
    int questions = 0;

    [[nodiscard]] std::optional<Failure> whyGone() const override { return gone; }
    Expected<FileInfo> info(const QString& path) override
    {
        ++questions;
        if (failures.contains(path))
            return failures[path];
        if (folders.contains(path) || files.contains(path))
            return FileInfo{FileInfo::Kind::Folder, 0};
        return _files.info(path);
    }
    Expected<QStringList> list(const QString& folder, Entries entries) override
    {
        if (failures.contains(folder))
            return failures[folder];
        const auto& names = entries == Entries::Files ? files : folders;
        return names.value(folder);
    }
    CopyResult copyOut(const QString& from, const QString& to, std::optional<int> progress) override
    {
        if (!cuts.contains(from))
            return _files.copyOut(from, to, progress);
        QFile file(to);
        if (file.open(QIODevice::WriteOnly))
            file.write(_files.readFile(from).valueOr({}).first(cuts[from]));
        return {CopyResult::End::Incomplete, QStringLiteral("Input/output error")};
    }
    CameraRollDb* cameraRollDb() override { return createdCameraRollDb(); }

private:
    MemoryDevice _files;
};
