#include "Window/ShownText.h"

QString ShownText::of(const QString& text)
{
    if (text.size() <= Longest)
        return text;
    qsizetype head = Longest / 2;
    if (text[head - 1].isHighSurrogate()) // no letter is cut in two
        --head;
    qsizetype tail = text.size() - Longest / 2;
    if (text[tail].isLowSurrogate())
        ++tail;
    return text.first(head) + QChar(0x2026) + text.sliced(tail);
}
