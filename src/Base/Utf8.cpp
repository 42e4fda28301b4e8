#include "Base/Utf8.h"

namespace
{
const QByteArrayView ByteOrderMark("\xef\xbb\xbf");
} // namespace

QString Utf8::whole(QByteArrayView bytes)
{
    if (!bytes.isValidUtf8())
        return {};
    qsizetype marks = 0;
    while (bytes.startsWith(ByteOrderMark)) {
        bytes = bytes.sliced(ByteOrderMark.size());
        ++marks;
    }
    const QString text = bytes.isEmpty() ? QString(QLatin1String("")) : QString::fromUtf8(bytes);
    return marks == 0 ? text : QString(marks, QChar(QChar::ByteOrderMark)) + text;
}

QString Utf8::text(QByteArrayView bytes)
{
    const qsizetype end = bytes.indexOf('\0');
    return whole(end < 0 ? bytes : bytes.first(end));
}

QString Utf8::textAcrossNuls(QByteArrayView bytes)
{
    return whole(bytes.toByteArray().replace('\0', QByteArray()));
}

bool Utf8::hasNul(QByteArrayView bytes)
{
    return bytes.contains('\0');
}
