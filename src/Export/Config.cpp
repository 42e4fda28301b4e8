#include "Export/Config.h"

#include "Base/PathName.h"
#include "Base/Program.h"
#include "Base/Utility.h"

#include <QDir>
#include <QSettings>

namespace
{
struct FolderSetting {
    QString key;
    QString name;
};

/// In the order of Config::Folder.
const std::array<FolderSetting, Config::FolderCount>& folderSettings()
{
    static const std::array<FolderSetting, Config::FolderCount> settings = {{
        {QStringLiteral("MusicDir"), QStringLiteral("Music")},
        {QStringLiteral("MoviesDir"), QStringLiteral("Movies")},
        {QStringLiteral("TVShowsDir"), QStringLiteral("TV Shows")},
        {QStringLiteral("PodcastsDir"), QStringLiteral("Podcasts")},
        {QStringLiteral("AudiobooksDir"), QStringLiteral("Audiobooks")},
        {QStringLiteral("RingtonesDir"), QStringLiteral("Ringtones")},
        {QStringLiteral("BooksDir"), QStringLiteral("Books")},
        {QStringLiteral("PlaylistsDir"), QStringLiteral("Playlists")},
        {QStringLiteral("VoiceMemosDir"), QStringLiteral("Voice Memos")},
        {QStringLiteral("CameraRollDir"), QStringLiteral("Camera Roll")},
        {QStringLiteral("PhotosDir"), QStringLiteral("Photos")},
    }};
    return settings;
}

const QString CopyRuleKey = QStringLiteral("CopyRule");
const QString HideBrowserKey = QStringLiteral("HideBrowser");
const QString CheckVersionKey = QStringLiteral("CheckVersion");

/// The store of this user. Made anew for each use, so that two programs never overwrite each
/// other's values with old ones.
QSettings store()
{
    return QSettings(QSettings::IniFormat, QSettings::UserScope, Program::briefName(),
                     Program::briefName());
}

QString defaultFolder(const QString& name)
{
    return PathName::join(PathName::join(QDir::homePath(), Program::briefName()), name);
}
} // namespace

QString Config::folderName(Folder folder)
{
    return folderSettings().at(std::size_t(folder)).name;
}

Config& Config::instance()
{
    static Config config;
    return config;
}

Config::Config()
{
    load();
}

void Config::load()
{
    const QSettings settings = store();
    for (std::size_t i = 0; i < FolderCount; ++i) {
        const QVariant value = settings.value(folderSettings()[i].key);
        _folders[i] = value.typeId() == QMetaType::QString
                          ? value.toString()
                          : defaultFolder(folderSettings()[i].name);
    }
    _copyRule = settings.value(CopyRuleKey).toInt();
    _hideBrowser = settings.value(HideBrowserKey).toBool();
    _checkVersion = settings.value(CheckVersionKey, true).toBool();
}

void Config::save() const
{
    QSettings settings = store();
    for (std::size_t i = 0; i < FolderCount; ++i)
        settings.setValue(folderSettings()[i].key, _folders[i]);
    settings.setValue(CopyRuleKey, _copyRule);
    settings.setValue(HideBrowserKey, _hideBrowser);
    settings.setValue(CheckVersionKey, _checkVersion);
}

const QString& Config::folderPath(Folder folder) const
{
    return _folders.at(std::size_t(folder));
}

void Config::setFolderPath(Folder folder, const QString& path)
{
    _folders.at(std::size_t(folder)) = path;
}

QString Config::existingFolder(Folder folder) const
{
    const QString& path = folderPath(folder);
    Utility::createFolder(path);
    return path;
}
