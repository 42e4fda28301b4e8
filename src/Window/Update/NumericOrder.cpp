#include "Window/Update/NumericOrder.h"

#include <algorithm>

namespace
{
bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

/// Takes the digits at the start of the text, without leading zeros.
QStringView takeNumber(QStringView& text)
{
    const auto end = std::find_if_not(text.begin(), text.end(), isDigit);
    QStringView number = text.first(end - text.begin());
    text = text.sliced(number.size());
    while (number.startsWith(u'0'))
        number = number.sliced(1);
    return number;
}

int order(qsizetype left, qsizetype right)
{
    return int(left > right) - int(left < right);
}
} // namespace

int compareNumerically(QStringView left, QStringView right)
{
    while (!left.isEmpty() && !right.isEmpty()) {
        int result = 0;
        if (isDigit(left.front()) && isDigit(right.front())) {
            const QStringView a = takeNumber(left);
            const QStringView b = takeNumber(right);
            // The longer number is the greater one: it has no leading zeros.
            result = a.size() != b.size() ? order(a.size(), b.size()) : a.compare(b);
        } else {
            result = order(left.front().unicode(), right.front().unicode());
            left = left.sliced(1);
            right = right.sliced(1);
        }
        if (result != 0)
            return result;
    }
    return order(left.size(), right.size());
}
