#pragma once

#include <QIcon>
#include <QString>

/// The program's own icons, by their file names in the resources without the ending.
namespace Icons
{
inline QIcon named(const QString& name)
{
    return QIcon(QStringLiteral(":/icons/%1.svg").arg(name));
}
} // namespace Icons
