#pragma once

class QPainter;
class QPalette;
class QRect;

/// The line around what the keyboard acts on.
namespace FocusRing
{
/// Draws it just inside `bounds`; `selected` says that these have the colour of a selection.
void draw(QPainter& painter, const QRect& bounds, const QPalette& palette, bool selected);
} // namespace FocusRing
