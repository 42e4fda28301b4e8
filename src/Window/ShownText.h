#pragma once

#include <QString>

/// Texts from a device as the window shows them.
namespace ShownText
{
constexpr qsizetype Longest = 256;

/// The text itself, or the beginning and the end of a very long one. A name from a device can
/// have any length; nobody sees the middle of a long one, and finding out how much room it needs
/// would take seconds each time that it is drawn.
QString of(const QString& text);
} // namespace ShownText
