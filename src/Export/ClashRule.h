#pragma once

#include <QHash>
#include <QString>

class Config;
class ExportHost;
class Folder;

/// What to do when the destination of an item exists already. The numbers are those of the
/// setting; any other number counts as Overwrite.
enum CopyRule : int { AskRule = 0, KeepBothRule = 1, OverwriteRule = 2, SkipRule = 3 };

/// A person's answer to the question which rule to apply.
struct ClashAnswer {
    int rule = KeepBothRule;
    bool remember = false; ///< make it the setting, and ask no more
};

/// What is to become of an item.
struct Destination {
    enum class Kind {
        New,     ///< written where nothing is
        Replace, ///< written in place of what has the name
        Skip,    ///< left alone
        Cancel   ///< the person gave up the whole export
    };

    Kind kind = Kind::New;
    QString path;
};

/// Where the items of one export are written. A link that has an item's name is in the way as
/// anything else is: nothing is written through it.
class ClashRule
{
public:
    /// Both outlive the object.
    ClashRule(Config& config, ExportHost& host);

    /// The question to ask about `path`.
    static QString question(const QString& path);

    /// What becomes of an item that is to go to `path`, whose last component is looked for in
    /// `folder`: the rule of the settings decides where something has the name; with the rule
    /// "ask", the host is asked.
    Destination checkPath(const Folder& folder, const QString& path);

    /// The first of "Song1.mp3", "Song2.mp3", ... for "Song.mp3" at which nothing exists; of one
    /// export, the first after those it gave before.
    QString availablePath(const Folder& folder, const QString& path);

private:
    Config& _config;
    ExportHost& _host;
    QHash<QString, quint64> _lastNumbers; ///< of thousands of one name, each is tried once
};
