#pragma once

#include <QAbstractItemView>
#include <QPoint>
#include <QString>
#include <QStringList>

class QWidget;

/// A person's hands on mouse and keyboard: what they do goes through the X server, as input from
/// a real one does. Each operation runs the event loop until the input has come.
namespace Hands
{
enum Button { Left = 1, Right = 3 };

/// Clicks a widget, in its middle unless a point is given.
void click(QWidget* widget, int button = Left, int times = 1);
void clickAt(QWidget* widget, QPoint position, int button = Left, int times = 1);
/// Clicks a cell of a view.
void clickCell(QAbstractItemView* view, const QModelIndex& index, int button = Left, int times = 1);
/// Moves the mouse from one point of a widget to another with its left button down.
void drag(QWidget* widget, QPoint from, QPoint to);
/// Presses a key and keeps it down until it is let go.
void hold(const QString& key);
void letGo(const QString& key);
/// A key with its modifiers, as in "ctrl+e".
void key(const QString& name);
void type(const QString& text);
} // namespace Hands
