// The Play button, and what it tells.

#include "support/WindowFixture.h"

#include <QMessageBox>
#include <QStandardPaths>

namespace
{
class PlayTest : public WindowFixture
{
protected:
    /// Plays the track of a row, with the button.
    void play(int row)
    {
        table()->selectRow(row);
        auto* button = part<QPushButton>("_btnPlay");
        ASSERT_TRUE(waitUntil([&] { return button->isEnabled(); }));
        Hands::click(button);
    }
    /// Once the status line says this, no alert comes after it.
    void expectOnlyInTheStatusLine(const QString& text)
    {
        EXPECT_TRUE(waitUntil([&] { return info() == text; })) << info().toStdString();
        waitUntil([deadline = QDeadlineTimer(300)] { return deadline.hasExpired(); });
        EXPECT_FALSE(part<QDialog>("_alertFinish"));
        EXPECT_FALSE(part<QProgressBar>("_li")->isVisible());
        EXPECT_FALSE(controller->jobs().isBusy());
    }
    static QString copies()
    {
        return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
               "/Zell iPod iPhone Transfer/Playing";
    }
};
} // namespace

TEST_F(PlayTest, AsksForATrackWhenNoneIsSelected)
{
    add("One", "first");
    openOnPlayer();
    table()->clearSelection();
    Hands::click(part<QPushButton>("_btnPlay"));
    const auto* box = waitFor<QMessageBox>("_alert");
    ASSERT_TRUE(box);
    EXPECT_EQ(box->text(), "Please select a track to play");
    EXPECT_EQ(box->informativeText(), "No tracks has been selected to play! Please select the "
                                      "track you want to play first.");
    ASSERT_EQ(box->buttons().size(), 1);
    EXPECT_EQ(box->buttons().front()->text().remove(u'&'), "OK");
    EXPECT_EQ(closeAlert("_alert"), "Please select a track to play");
    EXPECT_FALSE(controller->jobs().isBusy());
}

TEST_F(PlayTest, DoesNothingDuringAnExport)
{
    openOnEndlessExport();
    table()->selectRow(0);
    controller->perform(Command::play);
    EXPECT_FALSE(part<QPushButton>("_btnPlay")->isEnabled());
    EXPECT_FALSE(QFile::exists(copies()));
    EXPECT_TRUE(controller->jobs().isExport());
    Hands::click(part<QPushButton>("_btnExport"));
    EXPECT_EQ(closeAlert(), "Export canceled!");
}

TEST_F(PlayTest, AMissingFileIsToldByTheStatusLineOnly)
{
    add("Gone", "x");
    openOnPlayer();
    ASSERT_TRUE(QFile::remove(path("Mira/iPod_Control/Music/F00/1.mp3")));
    play(0);
    EXPECT_TRUE(waitUntil([this] { return info().startsWith("Export Finished!"); }));
    EXPECT_TRUE(info().contains("“Gone” cannot be played: ")) << info().toStdString();
    expectOnlyInTheStatusLine(info());
}

TEST_F(PlayTest, WhatIsNoSoundIsSaidToBeNone)
{
    add("Trap", "%PDF-1.7\n");
    openOnPlayer();
    play(0);
    EXPECT_TRUE(waitUntil([this] { return info().contains("neither sound nor film"); }));
    expectOnlyInTheStatusLine(info());
}

TEST_F(PlayTest, LeavesTheLineOfTheLastExportAlone)
{
    add("One", "first");
    add("Gone", "x");
    openOnPlayer();
    ASSERT_TRUE(QFile::remove(path("Mira/iPod_Control/Music/F00/2.mp3")));
    startExport();
    closeAlert();
    const auto* line = part<QToolButton>("_btnFailures");
    ASSERT_TRUE(line->isVisible());
    const QString text = line->text();
    play(1);
    EXPECT_TRUE(waitUntil([this] { return info().contains("cannot be played"); }));
    EXPECT_TRUE(line->isVisible());
    EXPECT_EQ(line->text(), text);
    EXPECT_EQ(controller->jobs().report()->items().size(), 2U);
}

TEST_F(PlayTest, PlaysTheFirstRow)
{
    add("One", "no sound at all"); // a text: it gets as far as the look at what it is
    add("Two", "second");
    openOnPlayer();
    play(0);
    EXPECT_TRUE(waitUntil([this] { return info().contains("“One”"); }));
    EXPECT_FALSE(part<QDialog>("_alert"));
}

TEST_F(PlayTest, StoppingIsToldByTheStatusLineOnly)
{
    openOnSlowPlayer();
    play(0);
    auto* button = part<QPushButton>("_btnExport");
    ASSERT_TRUE(waitUntil([&] { return button->text() == "Stop"; }));
    EXPECT_TRUE(part<QProgressBar>("_li")->isVisible());
    EXPECT_FALSE(part<QPushButton>("_btnPlay")->isEnabled());
    Hands::click(button);
    expectOnlyInTheStatusLine("Export Canceled!");
    EXPECT_EQ(button->text(), "Export");
    EXPECT_TRUE(part<QPushButton>("_btnPlay")->isEnabled());
    EXPECT_EQ(controller->jobs().report(), nullptr) << "it is no export";
}
