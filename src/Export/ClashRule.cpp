#include "Export/ClashRule.h"

#include "Base/PathName.h"
#include "Export/Config.h"
#include "Export/ExportHost.h"

#include <QFileInfo>

namespace
{
bool somethingExists(const QString& path)
{
    const QFileInfo info(path);
    // A link that leads nowhere is in the way as well: writing would follow it.
    return info.exists() || info.isSymLink();
}
} // namespace

QString ClashRule::question(const QString& path)
{
    return QStringLiteral("File \"%1\" already exist.").arg(path);
}

std::optional<QString> ClashRule::checkPath(const QString& path, Config& config, ExportHost& host)
{
    if (!somethingExists(path))
        return path;
    int rule = config.copyRule();
    if (rule == AskRule) {
        const std::optional<ClashAnswer> answer = host.askClash(path);
        if (!answer)
            return std::nullopt;
        rule = answer->rule;
        if (answer->remember) // for the rest of this job; whoever asked the person saves it
            config.setCopyRule(rule);
    }
    switch (rule) {
    case KeepBothRule:
        return availablePath(path);
    case SkipRule:
        return QLatin1String("");
    default:
        return path;
    }
}

QString ClashRule::availablePath(const QString& path)
{
    const QString base = PathName::withoutExtension(path);
    const QString extension = PathName::extension(path);
    for (quint64 n = 1;; ++n) {
        const QString candidate = PathName::withExtension(base + QString::number(n), extension);
        if (!somethingExists(candidate))
            return candidate;
    }
}
