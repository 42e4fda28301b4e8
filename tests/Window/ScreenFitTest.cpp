// The window and its dialogs on screens of any size and scale.

#include "AllWindows.h"
#include "Window/ScreenRoom.h"

#include <QDialogButtonBox>
#include <QProcess>
#include <QScreen>
#include <QScrollArea>

namespace
{
class ScreenFitTest : public AllWindows
{
protected:
    static void expectWithinScreen(const QWidget& top)
    {
        const QRect screen = top.screen()->availableGeometry();
        EXPECT_LE(top.frameGeometry().width(), screen.width());
        EXPECT_LE(top.frameGeometry().height(), screen.height());
    }
    static void expectButtonsWithin(const QWidget& top)
    {
        for (const auto* box : top.findChildren<QDialogButtonBox*>()) {
            for (const QAbstractButton* button : box->buttons()) {
                const QRect place(button->mapTo(&top, QPoint()), button->size());
                EXPECT_TRUE(top.rect().contains(place)) << button->text().toStdString();
            }
        }
    }
};
} // namespace

TEST_F(ScreenFitTest, TheWindowAndTheDialogsAreWithinTheScreen)
{
    expectWithinScreen(window());
    for (const char* name : {"_btnExport", "_btnPlay"}) {
        const auto* button = part<QWidget>(name);
        EXPECT_TRUE(
            window().rect().contains(QRect(button->mapTo(&window(), QPoint()), button->size())))
            << name;
    }
    forEachDialog([](QWidget& dialog) {
        expectWithinScreen(dialog);
        expectButtonsWithin(dialog);
    });
}

TEST_F(ScreenFitTest, ALargeScaleLeavesThemWithinTheScreen)
{
    // The scale is known when a program starts.
    for (const char* scale : {"2", "2.5"}) {
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_SCALE_FACTOR", scale);
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::ForwardedChannels);
        program.start(QCoreApplication::applicationFilePath(),
                      {"--gtest_filter=ScreenFitTest.TheWindowAndTheDialogsAreWithinTheScreen"});
        ASSERT_TRUE(program.waitForFinished(120'000));
        EXPECT_EQ(program.exitCode(), 0) << "at a scale of " << scale;
    }
}

TEST_F(ScreenFitTest, ADialogThatIsMadeSmallScrollsAboveItsButtons)
{
    forEachDialog([](QWidget& dialog) {
        auto* area = dialog.findChild<QScrollArea*>();
        if (!area)
            return; // a table or a text, which scroll by themselves
        dialog.resize(dialog.minimumSizeHint());
        ASSERT_TRUE(waitUntil([&] { return dialog.height() <= 240; }));
        expectButtonsWithin(dialog);
        for (auto* part : area->widget()->findChildren<QWidget*>()) {
            if (!(part->focusPolicy() & Qt::TabFocus) || !part->isEnabled())
                continue;
            area->ensureWidgetVisible(part);
            EXPECT_FALSE(part->visibleRegion().isEmpty()) << part->objectName().toStdString();
        }
    });
}

TEST_F(ScreenFitTest, ADialogHasTheSizeOfWhatItShowsWhereThereIsRoom)
{
    forEachDialog([](QWidget& dialog) {
        if (const auto* area = dialog.findChild<QScrollArea*>()) {
            EXPECT_GE(area->viewport()->height(), area->widget()->sizeHint().height());
            EXPECT_GE(area->viewport()->width(), area->widget()->sizeHint().width());
        }
    });
}
