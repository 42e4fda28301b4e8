#pragma once

#include "Base/Expected.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Removing what the program itself put there. No link is followed, so that nothing but the link
/// can go where one was planted, and no mounted file system is entered.
namespace FolderRemoval
{
/// Removes the entry `name` of an open folder, with all that it holds. Nothing there is fine.
Status remove(int folder, const QByteArray& name);

/// Removes the folder that the names `below` lead to from `base`, with all that it holds. `base`
/// is the person's and may be reached through links; if one of the names below it is a link, or
/// a folder of another user, nothing at all is touched.
Status removeOwn(const QString& base, const QStringList& below);
} // namespace FolderRemoval
