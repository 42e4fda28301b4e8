#pragma once

#include "Base/Expected.h"
#include "Device/Section.h"

#include <QCoreApplication>
#include <QSet>
#include <QString>

#include <array>

/// The person's settings: a destination folder for each category, the rule for name clashes,
/// whether the browser is hidden and whether new versions are asked for. Kept in a per-user file.
///
/// The one that the program shares is changed and saved on the window's thread alone. A job works
/// with a copy, which is never saved: it would bring back what the person has changed since.
class Config
{
    Q_DECLARE_TR_FUNCTIONS(Config)

public:
    /// The settings that the program shares; loaded at the first call.
    static Config& instance();

    Config();
    /// Reads the store. A missing value, or one of the wrong type, gives the default.
    void load();
    /// Writes to the store what was changed since the last time, and what it does not have yet;
    /// whatever else another program has written there stays. Says why when it cannot.
    Status save();

    /// The folder as it is set, without a look at the disk.
    [[nodiscard]] const QString& folderPath(Section section) const;
    void setFolderPath(Section section, const QString& path);
    /// The folder as it is set; created, with its parents, as far as that is possible.
    [[nodiscard]] QString existingFolder(Section section) const;

    /// A CopyRule, or a number that counts as overwriting.
    [[nodiscard]] int copyRule() const { return _copyRule; }
    void setCopyRule(int rule);
    [[nodiscard]] bool hideBrowser() const { return _hideBrowser; }
    void setHideBrowser(bool hide);
    /// Whether the program asks for a new version at its start.
    [[nodiscard]] bool checkVersion() const { return _checkVersion; }
    void setCheckVersion(bool check);

private:
    template <typename Value>
    void change(Value& setting, const Value& value, const QString& key);

    std::array<QString, Sections::Count> _folders;
    int _copyRule = 0;
    bool _hideBrowser = false;
    bool _checkVersion = true;
    QSet<QString> _changed; ///< keys of what differs from the store
};
