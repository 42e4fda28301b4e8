#include "Export/Config.h"

#include "Base/PathName.h"
#include "Base/Program.h"
#include "Base/Utility.h"

#include <QDir>
#include <QSettings>

namespace
{
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
    for (const SectionFacts& one : Sections::all()) {
        const QVariant value = settings.value(QLatin1String(one.settingsKey));
        _folders[std::size_t(one.section)] = value.typeId() == QMetaType::QString
                                                 ? value.toString()
                                                 : defaultFolder(QString::fromLatin1(one.folder));
    }
    _copyRule = settings.value(CopyRuleKey).toInt();
    _hideBrowser = settings.value(HideBrowserKey).toBool();
    _checkVersion = settings.value(CheckVersionKey, true).toBool();
}

void Config::save() const
{
    QSettings settings = store();
    for (const SectionFacts& one : Sections::all())
        settings.setValue(QLatin1String(one.settingsKey), folderPath(one.section));
    settings.setValue(CopyRuleKey, _copyRule);
    settings.setValue(HideBrowserKey, _hideBrowser);
    settings.setValue(CheckVersionKey, _checkVersion);
}

const QString& Config::folderPath(Section section) const
{
    return _folders.at(std::size_t(section));
}

void Config::setFolderPath(Section section, const QString& path)
{
    _folders.at(std::size_t(section)) = path;
}

QString Config::existingFolder(Section section) const
{
    const QString& path = folderPath(section);
    Utility::createFolder(path);
    return path;
}
