#pragma once

#include <QString>

#include <optional>

class Config;
class ExportHost;

/// What to do when the destination of an item exists already. The numbers are those of the
/// setting; any other number counts as Overwrite.
enum CopyRule : int { AskRule = 0, KeepBothRule = 1, OverwriteRule = 2, SkipRule = 3 };

/// A person's answer to the question which rule to apply.
struct ClashAnswer {
    int rule = KeepBothRule;
    bool remember = false; ///< make it the setting, and ask no more
};

namespace ClashRule
{
/// The question to ask about `path`.
QString question(const QString& path);

/// The path to write to: `path` itself where nothing exists yet, else what the rule of `config`
/// says; with the rule "ask", `host` is asked. Empty means that the item is skipped, no value
/// that the person gave up the whole export.
std::optional<QString> checkPath(const QString& path, Config& config, ExportHost& host);

/// The first of "Song1.mp3", "Song2.mp3", ... for "Song.mp3" at which nothing exists.
QString availablePath(const QString& path);
} // namespace ClashRule
