#include "support/Hands.h"

#include "support/EventLoop.h"

#include <QProcess>
#include <QWidget>

#include <gtest/gtest.h>

namespace
{
/// What has just been shown or filled lies where it will stay only after its layouts have run,
/// and one may ask for another.
void settle()
{
    for (int round = 0; round < 3; ++round) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

void xdotool(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral("xdotool"), arguments);
    // The window must go on while its input is made.
    EXPECT_TRUE(waitUntil([&] { return process.state() == QProcess::NotRunning; }));
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
    QCoreApplication::processEvents();
}
} // namespace

void Hands::click(QWidget* widget, int button, int times)
{
    clickAt(widget, widget->rect().center(), button, times);
}

void Hands::clickAt(QWidget* widget, QPoint position, int button, int times)
{
    EXPECT_TRUE(waitUntil([&] { return widget->isVisible(); }));
    settle();
    const QPoint onScreen = widget->mapToGlobal(position);
    xdotool({QStringLiteral("mousemove"), QString::number(onScreen.x()),
             QString::number(onScreen.y()), QStringLiteral("click"), QStringLiteral("--repeat"),
             QString::number(times), QStringLiteral("--delay"), QStringLiteral("40"),
             QString::number(button)});
}

void Hands::clickCell(QAbstractItemView* view, const QModelIndex& index, int button, int times)
{
    settle();
    view->scrollTo(index);
    clickAt(view->viewport(), view->visualRect(index).center(), button, times);
}

void Hands::drag(QWidget* widget, QPoint from, QPoint to)
{
    EXPECT_TRUE(waitUntil([&] { return widget->isVisible(); }));
    const auto moveTo = [widget](QPoint position) {
        const QPoint onScreen = widget->mapToGlobal(position);
        xdotool({QStringLiteral("mousemove"), QString::number(onScreen.x()),
                 QString::number(onScreen.y())});
    };
    moveTo(from);
    xdotool({QStringLiteral("mousedown"), QStringLiteral("1")});
    moveTo((from + to) / 2);
    moveTo(to);
    xdotool({QStringLiteral("mouseup"), QStringLiteral("1")});
}

void Hands::hold(const QString& key)
{
    xdotool({QStringLiteral("keydown"), key});
}

void Hands::letGo(const QString& key)
{
    xdotool({QStringLiteral("keyup"), key});
}

void Hands::key(const QString& name)
{
    xdotool({QStringLiteral("key"), name});
}

void Hands::type(const QString& text)
{
    xdotool({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("8"), text});
}
