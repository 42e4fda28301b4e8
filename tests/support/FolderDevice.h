#pragma once

#include "Base/PathName.h"
#include "Device/Device.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

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
    /// Files are listed, and gone when they are asked for by themselves.
    bool hideFiles = false;
    /// In which order folders and files are listed.
    QDir::SortFlags order = QDir::Name | QDir::IgnoreCase;

    QByteArray read(const QString& path) override
    {
        QFile file(local(path));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QByteArray read(const QString& path, quint32 offset, quint32 length) override
    {
        return read(path).mid(offset, length);
    }
    CameraRollDb* cameraRollDb() override { return createdCameraRollDb(); }
    bool fileExists(const QString& path) override
    {
        return QFileInfo::exists(local(path)) && (!hideFiles || isDirectory(path));
    }
    bool isDirectory(const QString& path) override { return QFileInfo(local(path)).isDir(); }
    QStringList getFiles(const QString& folder) override
    {
        return QDir(local(folder)).entryList(QDir::Files | QDir::Hidden, order);
    }
    QStringList getDirs(const QString& folder) override
    {
        return QDir(local(folder))
            .entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot, order);
    }
    double getFileSize(const QString& path) override
    {
        return double(QFileInfo(local(path)).size());
    }
    CopyResult copyOut(const QString& from, const QString& to, std::optional<int> progress) override
    {
        if (lost.contains(PathName::lastComponent(from)))
            return {};
        if (!isDirectory(from)) {
            QFile::copy(local(from), to);
            return {};
        }
        if (!QDir().mkdir(to))
            return {};
        for (const QString& name : getDirs(from) + getFiles(from))
            copyOut(PathName::join(from, name), PathName::join(to, name), progress);
        return {};
    }

private:
    [[nodiscard]] QString local(const QString& path) const { return PathName::join(_root, path); }

    QString _root;
};
