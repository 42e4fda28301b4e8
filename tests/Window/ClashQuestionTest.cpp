// The question about a file that is there already, answered in every way.

#include "Window/Dialogs/RadioMatrix.h"
#include "support/WindowFixture.h"

#include <QCheckBox>
#include <QDir>
#include <QSettings>

namespace
{
class ClashQuestionTest : public WindowFixture
{
protected:
    ClashQuestionTest() { Config::instance().setCopyRule(AskRule); } // others may be remembered

    /// Two tracks whose files exist already, and an export that asks about the first.
    void startExport()
    {
        add("One", "new one");
        add("Two", "new two");
        Files::write(out("Music/Artist/Album/One.mp3"), "old one");
        Files::write(out("Music/Artist/Album/Two.mp3"), "old two");
        openOnPlayer();
        WindowFixture::startExport();
        waitForQuestion("One");
    }
    void waitForQuestion(const QString& title)
    {
        const QString question =
            "File \"" + out("Music/Artist/Album/" + title + ".mp3") + "\" already exist.";
        ASSERT_TRUE(waitUntil([&] {
            auto* label = part<QLabel>("_tfCopyRule");
            return label && label->text() == question &&
                   part<QDialog>("_winCopyRule")->isActiveWindow();
        })) << title.toStdString();
    }
    /// Chooses by the letter that is underlined.
    void chooseRule(const QString& letter, int rule)
    {
        Hands::key("alt+" + letter);
        ASSERT_TRUE(
            waitUntil([&] { return part<RadioMatrix>("_mCopyRule1")->selectedRow() + 1 == rule; }));
    }
    QByteArray content(const QString& name)
    {
        return Files::read(out("Music/Artist/Album/" + name));
    }
};
} // namespace

TEST_F(ClashQuestionTest, KeepsBoth)
{
    startExport();
    Hands::key("Return"); // the first row is chosen
    waitForQuestion("Two");
    Hands::key("Return");
    EXPECT_EQ(closeAlert(), "Export finished!");
    EXPECT_EQ(content("One.mp3"), "old one");
    EXPECT_EQ(content("One1.mp3"), "new one");
    EXPECT_EQ(content("Two1.mp3"), "new two");
    EXPECT_EQ(Config().copyRule(), AskRule);
}

TEST_F(ClashQuestionTest, Overwrites)
{
    startExport();
    chooseRule("o", OverwriteRule);
    Hands::key("Return");
    waitForQuestion("Two");
    EXPECT_EQ(part<RadioMatrix>("_mCopyRule1")->selectedRow() + 1, OverwriteRule)
        << "what was answered last is proposed";
    Hands::key("Return");
    EXPECT_EQ(closeAlert(), "Export finished!");
    EXPECT_EQ(content("One.mp3"), "new one");
    EXPECT_EQ(content("Two.mp3"), "new two");
    EXPECT_FALSE(QFile::exists(out("Music/Artist/Album/One1.mp3")));
}

TEST_F(ClashQuestionTest, SkipsOneItemAndAsksAgain)
{
    startExport();
    chooseRule("s", SkipRule);
    Hands::key("Return");
    waitForQuestion("Two");
    chooseRule("o", OverwriteRule);
    Hands::key("Return");
    EXPECT_EQ(closeAlert(), "Export finished!");
    EXPECT_EQ(content("One.mp3"), "old one");
    EXPECT_EQ(content("Two.mp3"), "new two");
}

TEST_F(ClashQuestionTest, DoesNotAskAgainWhenToldSo)
{
    startExport();
    chooseRule("o", OverwriteRule);
    Hands::key("alt+d");
    ASSERT_TRUE(waitUntil([this] { return part<QCheckBox>("_btnAskLater")->isChecked(); }));
    Hands::key("Return");
    EXPECT_EQ(closeAlert(), "Export finished!");
    EXPECT_EQ(content("One.mp3"), "new one");
    EXPECT_EQ(content("Two.mp3"), "new two");
    EXPECT_EQ(Config::instance().copyRule(), OverwriteRule);
    EXPECT_EQ(Config().copyRule(), OverwriteRule) << "the next start knows it too";
}

TEST_F(ClashQuestionTest, GivingUpEndsTheExport)
{
    startExport();
    Hands::key("Escape");
    EXPECT_EQ(closeAlert(), "Export canceled!");
    EXPECT_EQ(content("One.mp3"), "old one");
    EXPECT_EQ(content("Two.mp3"), "old two");
    EXPECT_EQ(info(), "Export Canceled!");
}

TEST_F(ClashQuestionTest, ARememberedAnswerLeavesTheOtherSettingsAsTheyAre)
{
    startExport();
    // Changed while the question stands there, which the job, with its copy, knows nothing of.
    Config::instance().setFolderPath(Section::Movies, out("Films"));
    ASSERT_TRUE(Config::instance().save());
    chooseRule("s", SkipRule);
    Hands::key("alt+d");
    ASSERT_TRUE(waitUntil([this] { return part<QCheckBox>("_btnAskLater")->isChecked(); }));
    Hands::key("Return");
    EXPECT_EQ(closeAlert(), "Export finished!");
    EXPECT_EQ(Config().folderPath(Section::Movies), out("Films"));
    EXPECT_EQ(Config().copyRule(), SkipRule);
}

TEST_F(ClashQuestionTest, SaysThatAnAnswerCouldNotBeRemembered)
{
    startExport();
    const QString file = QSettings(QSettings::IniFormat, QSettings::UserScope,
                                   "Zell iPod iPhone Transfer", "Zell iPod iPhone Transfer")
                             .fileName();
    QFile::remove(file);
    ASSERT_TRUE(QDir().mkpath(file));
    chooseRule("s", SkipRule);
    Hands::key("alt+d");
    ASSERT_TRUE(waitUntil([this] { return part<QCheckBox>("_btnAskLater")->isChecked(); }));
    Hands::key("Return");
    EXPECT_TRUE(waitFor<QDialog>("_alertSettings"));
    ASSERT_TRUE(waitFor<QDialog>("_alertFinish"));
    for (const char* name : {"_alertFinish", "_alertSettings"}) {
        if (auto* box = part<QDialog>(name))
            box->reject();
    }
    EXPECT_TRUE(QDir().rmdir(file));
    EXPECT_TRUE(Config::instance().save());
    EXPECT_EQ(content("Two.mp3"), "old two") << "the job keeps to it all the same";
}
