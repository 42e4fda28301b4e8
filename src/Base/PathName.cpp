#include "Base/PathName.h"

#include <QDir>

namespace
{
QStringView withoutTrailingSlashes(QStringView path)
{
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return path;
}

/// Index of the dot before the extension in the whole path, or -1.
qsizetype extensionDot(QStringView path)
{
    const qsizetype nameStart = path.lastIndexOf(u'/') + 1;
    const qsizetype dot = path.lastIndexOf(u'.');
    if (dot <= nameStart || path.mid(nameStart) == u"..")
        return -1;
    return dot;
}
} // namespace

QString PathName::join(const QString& base, QStringView component)
{
    while (component.startsWith(u'/'))
        component = component.mid(1);
    if (component.isEmpty())
        return base;
    if (base.isEmpty())
        return component.toString();
    QStringView head = base;
    while (head.endsWith(u'/'))
        head.chop(1);
    QString path;
    path.reserve(head.size() + 1 + component.size());
    path.append(head).append(u'/').append(component);
    return path;
}

QString PathName::lastComponent(const QString& path)
{
    const QStringView trimmed = withoutTrailingSlashes(path);
    return trimmed.mid(trimmed.lastIndexOf(u'/') + 1).toString();
}

QString PathName::parent(const QString& path)
{
    const QStringView trimmed = withoutTrailingSlashes(path);
    const qsizetype slash = trimmed.lastIndexOf(u'/');
    if (slash < 0)
        return {};
    return withoutTrailingSlashes(trimmed.first(slash == 0 ? 1 : slash)).toString();
}

QString PathName::extension(const QString& path)
{
    const qsizetype dot = extensionDot(path);
    return dot < 0 ? QString() : path.mid(dot + 1);
}

QString PathName::withoutExtension(const QString& path)
{
    const qsizetype dot = extensionDot(path);
    return dot < 0 ? path : path.first(dot);
}

QString PathName::withExtension(const QString& path, const QString& extension)
{
    return extension.isEmpty() ? path : path + u'.' + extension;
}

bool PathName::isInside(const QString& path, const QString& folder)
{
    const QString cleanPath = QDir::cleanPath(path);
    QString cleanFolder = QDir::cleanPath(folder);
    if (!cleanFolder.endsWith(u'/'))
        cleanFolder += u'/';
    return cleanPath.size() > cleanFolder.size() && cleanPath.startsWith(cleanFolder);
}

bool PathName::hasParentComponent(const QString& path)
{
    return path == u".." || path.startsWith(u"../") || path.endsWith(u"/..") ||
           path.contains(u"/../");
}
