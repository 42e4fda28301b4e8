// The guide in a window of its own.

#include "Window/Help/HelpWindow.h"

#include "Window/Help/GuideView.h"
#include "support/WindowFixture.h"

#include <QListWidget>
#include <QTextBlock>

namespace
{
class HelpWindowTest : public WindowFixture
{
protected:
    void SetUp() override
    {
        open();
        waitForKeyboard();
        Hands::key("F1");
        ASSERT_TRUE(waitFor<HelpWindow>("_winHelp"));
        ASSERT_TRUE(waitUntil([this] { return help()->isActiveWindow(); }));
    }
    HelpWindow* help() { return part<HelpWindow>("_winHelp"); }
    GuideView* guide() { return part<GuideView>("_guide"); }
    /// The text that stands at the top of the view.
    QString atTop() { return guide()->cursorForPosition({30, 30}).block().text(); }
    int position() { return guide()->textCursor().position(); }
};
} // namespace

TEST_F(HelpWindowTest, ShowsTheWholeGuide)
{
    const QString guideText =
        QString::fromUtf8(Files::read(QStringLiteral(ZELL_SOURCES "/docs/help.md")));
    const QString shown = guide()->toPlainText();
    int headings = 0;
    for (const QString& line : guideText.split(u'\n')) {
        if (!line.startsWith("## ") && !line.startsWith("### "))
            continue;
        ++headings;
        EXPECT_TRUE(shown.contains(line.section(u' ', 1))) << line.toStdString();
    }
    EXPECT_EQ(part<QListWidget>("_lvChapters")->count(), headings);
    EXPECT_TRUE(shown.contains("iPod Connected!"));
}

TEST_F(HelpWindowTest, ShowsEachPictureOfTheGuide)
{
    int pictures = 0;
    for (QTextBlock block = guide()->document()->begin(); block.isValid(); block = block.next()) {
        for (auto at = block.begin(); !at.atEnd(); ++at) {
            const QTextImageFormat picture = at.fragment().charFormat().toImageFormat();
            if (!picture.isValid())
                continue;
            ++pictures;
            const QVariant drawn =
                guide()->document()->resource(QTextDocument::ImageResource, QUrl(picture.name()));
            EXPECT_FALSE(drawn.value<QPixmap>().isNull()) << picture.name().toStdString();
        }
    }
    EXPECT_EQ(pictures, 11); // one for each row of the source list
}

TEST_F(HelpWindowTest, AChapterLeadsThereAndTheHistoryBack)
{
    auto* chapters = part<QListWidget>("_lvChapters");
    const QListWidgetItem* item = chapters->findItems("Shortcuts", Qt::MatchExactly).value(0);
    ASSERT_TRUE(item);
    const QString first = atTop();
    Hands::clickCell(chapters, chapters->model()->index(chapters->row(item), 0));
    EXPECT_TRUE(waitUntil([&] { return atTop() != first; }));
    EXPECT_GT(guide()->source().fragment(), "");
    Hands::key("alt+Left");
    EXPECT_TRUE(waitUntil([&] { return atTop() == first; }));
    Hands::key("alt+Right");
    EXPECT_TRUE(waitUntil([&] { return atTop() != first; }));
}

TEST_F(HelpWindowTest, FindsEachPlaceAndMarksIt)
{
    Hands::key("ctrl+f");
    Hands::type("playlist");
    ASSERT_TRUE(waitUntil([this] { return guide()->hitCount() > 0; }));
    const int count = guide()->hitCount();
    EXPECT_EQ(count, guide()->toPlainText().count("playlist", Qt::CaseInsensitive));
    EXPECT_EQ(guide()->extraSelections().size(), count);
    EXPECT_EQ(part<QLabel>("_tfHits")->text(), QString("1 of %1").arg(count));
    const int first = position();
    Hands::key("F3");
    EXPECT_TRUE(waitUntil([this] { return guide()->currentHit() == 2; }));
    EXPECT_GT(position(), first);
    Hands::key("shift+F3");
    EXPECT_TRUE(waitUntil([this] { return guide()->currentHit() == 1; }));
    Hands::key("shift+F3");
    EXPECT_TRUE(waitUntil([&] { return guide()->currentHit() == count; })) << "around the end";
}

TEST_F(HelpWindowTest, SaysWhenNothingIsFoundAndEscapeClearsThenCloses)
{
    Hands::key("ctrl+f");
    Hands::type("xyzzy");
    EXPECT_TRUE(waitUntil([this] { return part<QLabel>("_tfHits")->text() == "Not found"; }));
    Hands::key("Escape");
    EXPECT_TRUE(waitUntil([this] { return part<QLineEdit>("_sfHelp")->text().isEmpty(); }));
    EXPECT_TRUE(guide()->extraSelections().isEmpty());
    Hands::key("Escape");
    EXPECT_TRUE(waitUntil([this] { return !help(); }));
}

TEST_F(HelpWindowTest, IsOneWindowHoweverOftenItIsAskedFor)
{
    HelpWindow* first = help();
    controller->perform(Command::help);
    EXPECT_EQ(help(), first);
    EXPECT_EQ(window().findChildren<HelpWindow*>().size(), 1);
    Hands::click(part<QPushButton>("_btnHowToConnect"));
    EXPECT_EQ(window().findChildren<HelpWindow*>().size(), 1);
}
