#pragma once

#include "Base/PathName.h"
#include "Device/Device.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <functional>
#include <optional>

/// A device that copies whole folders, as phones do, from a folder of the computer. Paths are
/// rooted at "/".
class FolderDevice final : public Device
{
public:
    explicit FolderDevice(const QString& root)
        : _root(root)
    {
        _prefix = QStringLiteral("/");
        _controlPath = QStringLiteral("/iTunes_Control");
        _bookPath = QStringLiteral("/Books");
    }
    ~FolderDevice() override { releaseReaders(); }

    void useControlFolder(const QString& path) { _controlPath = path; }

    /// Files that are left out of copies, as if the connection had broken.
    QStringList lost;
    /// How a copy of a folder or a file ends instead of as it does; made is what was asked for.
    std::optional<CopyResult> ending;
    /// Called before each copy.
    std::function<void(const QString& to)> onCopy;
    /// Whether the device is there.
    bool gone = false;
    /// Files are listed, and gone when they are asked for by themselves.
    bool hideFiles = false;
    /// In which order folders and files are listed.
    QDir::SortFlags order = QDir::Name | QDir::IgnoreCase;

    Expected<QByteArray> readFile(const QString& path) override
    {
        QFile file(local(path));
        if (!file.open(QIODevice::ReadOnly))
            return missing();
        return file.readAll();
    }
    Expected<QByteArray> readPart(const QString& path, quint64 offset, quint64 length) override
    {
        Expected<QByteArray> whole = readFile(path);
        if (whole)
            *whole = whole->mid(qsizetype(offset), qsizetype(length));
        return whole;
    }
    CameraRollDb* cameraRollDb() override { return createdCameraRollDb(); }
    Expected<FileInfo> info(const QString& path) override
    {
        const QFileInfo found(local(path));
        if (!found.exists() || (hideFiles && !found.isDir()))
            return missing();
        return FileInfo{found.isDir() ? FileInfo::Kind::Folder : FileInfo::Kind::File,
                        found.size()};
    }
    Expected<QStringList> list(const QString& folder, Entries entries) override
    {
        const QDir::Filters filters = entries == Entries::Files
                                          ? QDir::Files | QDir::Hidden
                                          : QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot;
        return QDir(local(folder)).entryList(filters, order);
    }
    CopyResult copyOut(const QString& from, const QString& to, std::optional<int> progress) override
    {
        if (onCopy)
            onCopy(to);
        if (lost.contains(PathName::lastComponent(from)))
            return {};
        if (!isDirectory(from)) {
            QFile::copy(local(from), to);
            return ending.value_or(CopyResult{});
        }
        if (!QDir().mkdir(to))
            return {CopyResult::End::Failed, QStringLiteral("no folder")};
        for (const QString& name : getDirs(from) + getFiles(from))
            copyOut(PathName::join(from, name), PathName::join(to, name), progress);
        return ending.value_or(CopyResult{});
    }
    [[nodiscard]] std::optional<Failure> whyGone() const override
    {
        if (!gone)
            return std::nullopt;
        return Failure{Failure::Kind::Lost, QStringLiteral("The device was disconnected"), {}};
    }

private:
    static Failure missing() { return {Failure::Kind::Missing, QStringLiteral("missing"), {}}; }
    [[nodiscard]] QString local(const QString& path) const { return PathName::join(_root, path); }

    QString _root;
};
