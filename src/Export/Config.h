#pragma once

#include "Device/Section.h"

#include <QString>

#include <array>

/// The person's settings: a destination folder for each category, the rule for name clashes,
/// whether the browser is hidden and whether new versions are asked for. Kept in a per-user file.
/// Changed on the window's thread, and only while no export runs.
class Config
{
public:
    /// The settings that the program shares; loaded at the first call.
    static Config& instance();

    Config();
    /// Reads the store. A missing value, or one of the wrong type, gives the default.
    void load();
    /// Writes every setting to the store.
    void save() const;

    /// The folder as it is set, without a look at the disk.
    [[nodiscard]] const QString& folderPath(Section section) const;
    void setFolderPath(Section section, const QString& path);
    /// The folder as it is set; created, with its parents, as far as that is possible.
    [[nodiscard]] QString existingFolder(Section section) const;

    /// A CopyRule, or a number that counts as overwriting.
    [[nodiscard]] int copyRule() const { return _copyRule; }
    void setCopyRule(int rule) { _copyRule = rule; }
    [[nodiscard]] bool hideBrowser() const { return _hideBrowser; }
    void setHideBrowser(bool hide) { _hideBrowser = hide; }
    /// Whether the program asks for a new version at its start.
    [[nodiscard]] bool checkVersion() const { return _checkVersion; }
    void setCheckVersion(bool check) { _checkVersion = check; }

private:
    std::array<QString, Sections::Count> _folders;
    int _copyRule = 0;
    bool _hideBrowser = false;
    bool _checkVersion = true;
};
