// What people who use the keyboard see: where it is, and which letters lead where.

#include "AllWindows.h"

#include <QAbstractButton>
#include <QAction>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QScrollArea>

namespace
{
class KeyboardTest : public AllWindows
{
protected:
    /// Each part that the keyboard can reach looks otherwise while it has the keyboard.
    static void expectVisibleFocus(QWidget& top)
    {
        int seen = 0;
        for (auto* part : top.findChildren<QWidget*>()) {
            if (!(part->focusPolicy() & Qt::TabFocus) || !part->isEnabled() ||
                !part->isVisibleTo(&top) || part->focusProxy())
                continue;
            ++seen;
            part->clearFocus();
            const QImage without = part->grab().toImage();
            part->setFocus(Qt::OtherFocusReason);
            ASSERT_TRUE(waitUntil([&] { return part->hasFocus(); }))
                << part->objectName().toStdString();
            // Where the focus came while the window was not yet active, it shows a moment later.
            EXPECT_TRUE(waitUntil([&] { return differing(without, part->grab().toImage()) > 40; }))
                << part->metaObject()->className() << ' ' << part->objectName().toStdString();
        }
        EXPECT_GT(seen, 0);
    }
    static int differing(const QImage& one, const QImage& other)
    {
        int count = 0;
        for (int y = 0; y < std::min(one.height(), other.height()); ++y) {
            for (int x = 0; x < std::min(one.width(), other.width()); ++x)
                count += one.pixel(x, y) != other.pixel(x, y);
        }
        return count;
    }
    static QString letterOf(const QString& text)
    {
        const QKeySequence keys = QKeySequence::mnemonic(text);
        return keys.isEmpty() ? QString() : keys.toString();
    }
    static void expectDistinct(const QStringList& texts)
    {
        QHash<QString, QString> owners;
        for (const QString& text : texts) {
            const QString letter = letterOf(text);
            EXPECT_FALSE(letter.isEmpty()) << text.toStdString();
            EXPECT_FALSE(owners.contains(letter))
                << text.toStdString() << " and " << owners.value(letter).toStdString();
            owners.insert(letter, text);
        }
    }
    static void expectDistinctItems(const QMenu& menu)
    {
        QStringList texts;
        for (const QAction* item : menu.actions()) {
            if (!item->isSeparator())
                texts.append(item->text());
            if (item->menu())
                expectDistinctItems(*item->menu());
        }
        expectDistinct(texts);
    }
};
} // namespace

TEST_F(KeyboardTest, IsSeenOnEachPartOfTheWindow)
{
    window().tracks().tableView()->selectRow(0);
    expectVisibleFocus(*window().centralWidget());
    choose("Movies"); // has no rows at all
    expectVisibleFocus(window().tracks());
    choose("Photo");
    expectVisibleFocus(window().photos());
}

TEST_F(KeyboardTest, IsSeenOnEachPartOfTheEmptyWindow)
{
    player.reset();
    ASSERT_TRUE(waitUntil([this] { return devices().isEmpty(); }));
    expectVisibleFocus(*part<QWidget>("_vEmpty"));
}

TEST_F(KeyboardTest, IsSeenOnEachPartOfTheDialogs)
{
    forEachDialog([](QWidget& dialog) { expectVisibleFocus(dialog); });
}

TEST_F(KeyboardTest, EachItemOfAMenuHasALetterOfItsOwn)
{
    QStringList titles;
    for (const QAction* title : window().menuBar()->actions()) {
        titles.append(title->text());
        ASSERT_TRUE(title->menu());
        expectDistinctItems(*title->menu());
    }
    expectDistinct(titles);
    for (const QMenu* menu : {controller->menu().sourceListMenu(), controller->menu().tableMenu(),
                              controller->menu().photoMenu()})
        expectDistinctItems(*menu);
}

TEST_F(KeyboardTest, EachButtonOfADialogHasALetterOfItsOwn)
{
    forEachDialog([](QWidget& dialog) {
        QStringList texts;
        for (const auto* button : dialog.findChildren<QAbstractButton*>()) {
            if (button->isVisibleTo(&dialog) && !button->text().isEmpty())
                texts.append(button->text());
        }
        expectDistinct(texts);
    });
}

TEST_F(KeyboardTest, AnEllipsisStandsOnWhatAsksBeforeItActs)
{
    controller->perform(Command::checkAll);
    for (const Command command : {Command::exportCheckedTracks, Command::exportAllMusic,
                                  Command::exportAllMedia, Command::exportAllPlaylists}) {
        const QAction* action = controller->menu().action(command);
        EXPECT_TRUE(action->text().endsWith(u'…')) << action->text().toStdString();
        controller->perform(command);
        ASSERT_TRUE(waitFor<QDialog>("_winExportMode")) << action->text().toStdString();
        part<QDialog>("_winExportMode")->reject();
        ASSERT_TRUE(waitUntil([this] { return !controller->jobs().isBusy(); }));
    }
}
