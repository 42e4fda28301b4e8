#include "Export/ClashRule.h"

#include "Base/PathName.h"
#include "Export/Config.h"
#include "Export/ExportHost.h"
#include "Platform/Folder.h"

namespace
{
bool isTaken(const Folder& folder, const QString& path)
{
    return bool(folder.entry(PathName::lastComponent(path)));
}
} // namespace

ClashRule::ClashRule(Config& config, ExportHost& host)
    : _config(config)
    , _host(host)
{
}

QString ClashRule::question(const QString& path)
{
    return QStringLiteral("File \"%1\" already exist.").arg(path);
}

Destination ClashRule::checkPath(const Folder& folder, const QString& path)
{
    using Kind = Destination::Kind;
    if (!isTaken(folder, path))
        return {Kind::New, path};
    int rule = _config.copyRule();
    if (rule == AskRule) {
        const std::optional<ClashAnswer> answer = _host.askClash(path);
        if (!answer)
            return {Kind::Cancel, path};
        rule = answer->rule;
        if (answer->remember) {
            _config.setCopyRule(rule);
            _config.save();
        }
    }
    switch (rule) {
    case KeepBothRule:
        return {Kind::New, availablePath(folder, path)};
    case SkipRule:
        return {Kind::Skip, path};
    default:
        return {Kind::Replace, path};
    }
}

QString ClashRule::availablePath(const Folder& folder, const QString& path)
{
    const QString base = PathName::withoutExtension(path);
    const QString extension = PathName::extension(path);
    quint64& number = _lastNumbers[path];
    for (;;) {
        const QString candidate =
            PathName::withExtension(base + QString::number(++number), extension);
        if (!isTaken(folder, candidate))
            return candidate;
    }
}
