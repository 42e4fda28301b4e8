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
    _changed.clear();
}

Status Config::save()
{
    QSettings settings = store();
    const auto write = [&](const QString& key, const QVariant& value) {
        if (_changed.contains(key) || !settings.contains(key))
            settings.setValue(key, value);
    };
    for (const SectionFacts& one : Sections::all())
        write(QLatin1String(one.settingsKey), folderPath(one.section));
    write(CopyRuleKey, _copyRule);
    write(HideBrowserKey, _hideBrowser);
    write(CheckVersionKey, _checkVersion);
    settings.sync();
    if (settings.status() != QSettings::NoError)
        return Failure{Failure::Kind::Unwritable, tr("The settings could not be saved"),
                       settings.fileName()};
    _changed.clear();
    return {};
}

template <typename Value>
void Config::change(Value& setting, const Value& value, const QString& key)
{
    if (setting == value)
        return;
    setting = value;
    _changed.insert(key);
}

void Config::setCopyRule(int rule)
{
    change(_copyRule, rule, CopyRuleKey);
}

void Config::setHideBrowser(bool hide)
{
    change(_hideBrowser, hide, HideBrowserKey);
}

void Config::setCheckVersion(bool check)
{
    change(_checkVersion, check, CheckVersionKey);
}

const QString& Config::folderPath(Section section) const
{
    return _folders.at(std::size_t(section));
}

void Config::setFolderPath(Section section, const QString& path)
{
    change(_folders.at(std::size_t(section)), path,
           QString::fromLatin1(Sections::facts(section).settingsKey));
}

QString Config::existingFolder(Section section) const
{
    const QString& path = folderPath(section);
    Utility::createFolder(path);
    return path;
}
