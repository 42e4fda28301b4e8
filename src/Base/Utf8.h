#pragma once

#include <QByteArrayView>
#include <QString>

/// Texts out of the databases of devices, which end at a NUL as the strings of C do, and keep a
/// U+FEFF that they begin with: Qt's own functions would take it for a mark of the encoding.
namespace Utf8
{
/// The text up to its first NUL; empty for no bytes, null for bytes that are no UTF-8.
QString text(QByteArrayView bytes);
/// The text with what follows a NUL, and without the NULs.
QString textAcrossNuls(QByteArrayView bytes);
/// All of it, the NULs too; empty for no bytes, null for bytes that are no UTF-8.
QString whole(QByteArrayView bytes);
/// Whether there is a NUL.
bool hasNul(QByteArrayView bytes);
} // namespace Utf8
