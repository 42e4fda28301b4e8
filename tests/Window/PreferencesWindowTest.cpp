#include "Window/Dialogs/PreferencesWindow.h"

#include "Export/ClashRule.h"
#include "Window/Dialogs/RadioMatrix.h"
#include "support/EventLoop.h"
#include "support/Files.h"
#include "support/Hands.h"

#include <QApplication>
#include <QCheckBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

namespace
{
class PreferencesWindowTest : public testing::Test
{
protected:
    void show(bool canCheckVersion = true)
    {
        window = new PreferencesWindow(config, canCheckVersion);
        window->showPref();
        ASSERT_TRUE(waitUntil([this] { return window->isActiveWindow(); }));
    }
    QLineEdit* field(const char* name) { return window->findChild<QLineEdit*>(name); }
    /// Runs the folder chooser that tag `tag` opens, and answers it.
    void choose(int tag, const QString& answerFolder)
    {
        bool asked = false;
        QTimer answer;
        QObject::connect(&answer, &QTimer::timeout, &answer, [&] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (!dialog || asked)
                return;
            asked = true;
            startFolder = dialog->directory().absolutePath();
            if (answerFolder.isEmpty()) {
                dialog->reject();
                return;
            }
            dialog->findChild<QLineEdit*>("fileNameEdit")->setText(answerFolder);
            QMetaObject::invokeMethod(dialog, "accept");
        });
        answer.start(20);
        window->selectBackupFolder(tag);
        chooserOpened = asked;
    }

    QTemporaryDir folder;
    Config config;
    QPointer<PreferencesWindow> window;
    QString startFolder;
    bool chooserOpened = false;
};

constexpr std::array Fields = {"_tfMusic",      "_tfMovies",     "_tfTVShows", "_tfPodcasts",
                               "_tfAudiobooks", "_tfRingtones",  "_tfBooks",   "_tfPlaylists",
                               "_tfVoiceMemos", "_tfCameraRoll", "_tfPhotos"};
} // namespace

TEST_F(PreferencesWindowTest, ShowsTheElevenFoldersAndTheRule)
{
    config.setCopyRule(OverwriteRule);
    show();
    for (int i = 0; i < int(Sections::Count); ++i)
        EXPECT_EQ(field(Fields[std::size_t(i)])->text(), config.folderPath(Section(i)));
    EXPECT_EQ(window->findChild<RadioMatrix*>("_mCopyRule")->selectedRow(), 2);
    delete window;
}

TEST_F(PreferencesWindowTest, ClosingStoresEveryField)
{
    show();
    for (int i = 0; i < int(Sections::Count); ++i)
        field(Fields[std::size_t(i)])->setText(QString("/tmp/folder %1").arg(i));
    window->findChild<RadioMatrix*>("_mCopyRule")->setSelectedRow(3);
    window->endPref();
    EXPECT_TRUE(waitUntil([this] { return window.isNull(); }));
    const Config stored;
    for (int i = 0; i < int(Sections::Count); ++i)
        EXPECT_EQ(stored.folderPath(Section(i)), QString("/tmp/folder %1").arg(i));
    EXPECT_EQ(stored.copyRule(), 3);
}

TEST_F(PreferencesWindowTest, CancellingStoresNothing)
{
    show();
    const QString before = config.folderPath(Section::Music);
    field("_tfMusic")->setText("/tmp/elsewhere");
    Hands::key("Escape");
    EXPECT_TRUE(waitUntil([this] { return window.isNull(); }));
    EXPECT_EQ(config.folderPath(Section::Music), before);
}

TEST_F(PreferencesWindowTest, OffersTheSwitchWhereSomebodyCanBeAsked)
{
    show();
    const auto* check = window->findChild<QCheckBox*>("_btnCheckVersion");
    EXPECT_TRUE(check->isEnabled());
    EXPECT_TRUE(check->isChecked());
}

TEST_F(PreferencesWindowTest, SaysThatAProgramWithoutAnAddressNeverAsks)
{
    show(false);
    const auto* check = window->findChild<QCheckBox*>("_btnCheckVersion");
    EXPECT_FALSE(check->isEnabled());
    EXPECT_TRUE(check->toolTip().contains("never asks")) << check->toolTip().toStdString();
    EXPECT_EQ(check->accessibleDescription(), check->toolTip());
    // What the person once chose stays, for a program that can ask.
    config.setCheckVersion(false);
    window->showPref();
    window->endPref();
    EXPECT_FALSE(Config().checkVersion());
}

TEST_F(PreferencesWindowTest, ChoosesAFolderStartingInTheOneWritten)
{
    show();
    QDir().mkpath(folder.filePath("old"));
    QDir().mkpath(folder.filePath("new"));
    field("_tfMusic")->setText(folder.filePath("old"));
    choose(1, folder.filePath("new"));
    EXPECT_EQ(startFolder, folder.filePath("old"));
    EXPECT_EQ(field("_tfMusic")->text(), folder.filePath("new"));
    EXPECT_NE(Config().folderPath(Section::Music), folder.filePath("new"))
        << "nothing is stored before the window is closed";
    delete window;
}

TEST_F(PreferencesWindowTest, CancellingTheChooserLeavesTheField)
{
    show();
    field("_tfMusic")->setText(folder.path());
    choose(1, {});
    EXPECT_TRUE(chooserOpened);
    EXPECT_EQ(field("_tfMusic")->text(), folder.path());
    delete window;
}

TEST_F(PreferencesWindowTest, TagsCountFromOne)
{
    show();
    choose(11, folder.path());
    EXPECT_EQ(field("_tfPhotos")->text(), folder.path());
    choose(0, folder.path());
    EXPECT_FALSE(chooserOpened);
    delete window;
}

TEST_F(PreferencesWindowTest, AFolderWithoutAFullPathCannotBeStored)
{
    show();
    QPushButton* done = nullptr;
    for (QPushButton* button : window->findChildren<QPushButton*>()) {
        if (button->isDefault())
            done = button;
    }
    ASSERT_TRUE(done);
    EXPECT_TRUE(done->isEnabled());
    field("_tfBooks")->setText("");
    EXPECT_FALSE(done->isEnabled());
    field("_tfBooks")->setText("books");
    EXPECT_FALSE(done->isEnabled());
    field("_tfBooks")->setText("/books");
    EXPECT_TRUE(done->isEnabled());
    delete window;
}

TEST_F(PreferencesWindowTest, LeavesAloneWhatChangedElsewhereMeanwhile)
{
    show();
    config.setCopyRule(SkipRule); // the answer to a question that came over the window
    config.setFolderPath(Section::Movies, "/elsewhere");
    field("_tfMusic")->setText("/tmp/songs");
    window->endPref();
    const Config stored;
    EXPECT_EQ(stored.copyRule(), SkipRule);
    EXPECT_EQ(stored.folderPath(Section::Movies), "/elsewhere");
    EXPECT_EQ(stored.folderPath(Section::Music), "/tmp/songs");
}
