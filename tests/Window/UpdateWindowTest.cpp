// The offer of a new version, and the switch that turns the question off.

#include "support/LoopbackServer.h"
#include "support/WindowFixture.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QMessageBox>

namespace
{
class UpdateWindowTest : public WindowFixture
{
protected:
    UpdateWindowTest()
    {
        // A browser that only writes down what it is to open.
        Files::write(path("bin/xdg-open"), "#!/bin/sh\nprintf '%s' \"$1\" >\"$OPENED.new\"\n"
                                           "mv \"$OPENED.new\" \"$OPENED\"\n");
        QFile::setPermissions(path("bin/xdg-open"),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        qputenv("OPENED", QFile::encodeName(path("opened")));
        qputenv("PATH", QFile::encodeName(path("bin")) + ':' + qgetenv("PATH"));
        updateAddresses = {server.address("/?op=GetVersion3"),
                           "http://zell.example/",
                           QUrl("http://zell.example/get?version=new"),
                           {}};
    }

    /// The offer of a program that has just been started, once the service has named the latest
    /// version.
    QMessageBox* offer()
    {
        open();
        auto* box = waitFor<QMessageBox>("_alertNewVersion");
        EXPECT_TRUE(waitUntil([box] { return box && box->isActiveWindow(); }));
        return box;
    }
    bool waitUntilClosed()
    {
        return waitUntil([this] { return !part<QMessageBox>("_alertNewVersion"); });
    }
    /// Gives what should not happen time to happen.
    static void aMoment()
    {
        waitUntil([deadline = QDeadlineTimer(500)] { return deadline.hasExpired(); });
    }

    QByteArray latest = "2.6.0";
    LoopbackServer server{[this](const LoopbackServer::Request&) {
        return LoopbackServer::answer("<GetVersion3Response><GetVersion3Result>" + latest +
                                      "</GetVersion3Result></GetVersion3Response>");
    }};
};
} // namespace

TEST_F(UpdateWindowTest, DownloadOpensThePage)
{
    QMessageBox* box = offer();
    ASSERT_TRUE(box);
    EXPECT_EQ(box->text(), "Zell iPod iPhone Transfer New Version");
    EXPECT_EQ(box->informativeText(), "New version 2.6.0 found!");
    ASSERT_EQ(box->buttons().size(), 2);
    EXPECT_EQ(box->buttons()[0]->text().remove(u'&'), "Download");
    EXPECT_EQ(box->buttons()[1]->text().remove(u'&'), "Cancel");
    Hands::click(box->buttons()[0]);
    EXPECT_TRUE(waitUntilClosed());
    ASSERT_TRUE(waitUntil([this] { return QFile::exists(path("opened")); }));
    EXPECT_EQ(Files::read(path("opened")), "http://zell.example/get?version=new");
}

TEST_F(UpdateWindowTest, CancelOpensNoBrowser)
{
    QMessageBox* box = offer();
    ASSERT_TRUE(box);
    Hands::click(box->buttons()[1]);
    EXPECT_TRUE(waitUntilClosed());
    aMoment();
    EXPECT_FALSE(QFile::exists(path("opened")));
}

TEST_F(UpdateWindowTest, WhatTheServiceSaysIsNoMarkup)
{
    latest = "&lt;b&gt;9&lt;/b&gt;";
    QMessageBox* box = offer();
    ASSERT_TRUE(box);
    EXPECT_EQ(box->informativeText(), "New version <b>9</b> found!");
    for (const QLabel* label : box->findChildren<QLabel*>())
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
    Hands::key("Escape");
    EXPECT_TRUE(waitUntilClosed());
}

TEST_F(UpdateWindowTest, ClosingTheOfferOpensNoBrowser)
{
    ASSERT_TRUE(offer());
    Hands::key("Escape");
    EXPECT_TRUE(waitUntilClosed());
    aMoment();
    EXPECT_FALSE(QFile::exists(path("opened")));
}

TEST_F(UpdateWindowTest, EachStartAsksOnce)
{
    latest = "2.5.1";
    for (std::size_t start = 1; start <= 2; ++start) {
        open();
        ASSERT_TRUE(waitUntil([&] { return server.requests().size() == start; }));
        aMoment();
        EXPECT_EQ(server.requests().size(), start);
        EXPECT_FALSE(part<QMessageBox>("_alertNewVersion"));
        controller.reset();
    }
}

TEST_F(UpdateWindowTest, AProgramWithoutAnAddressAsksNobodyAndSaysSo)
{
    updateAddresses = {};
    open();
    controller->perform(Command::showPref);
    auto* check = waitFor<QCheckBox>("_btnCheckVersion");
    ASSERT_TRUE(check);
    EXPECT_FALSE(check->isEnabled());
    EXPECT_FALSE(check->toolTip().isEmpty());
    aMoment();
    EXPECT_TRUE(server.requests().empty());
}

TEST_F(UpdateWindowTest, TheSwitchInThePreferencesTurnsTheQuestionOff)
{
    latest = "2.5.1";
    open();
    ASSERT_TRUE(waitUntil([this] { return server.requests().size() == 1; }));
    controller->perform(Command::showPref);
    auto* check = waitFor<QCheckBox>("_btnCheckVersion");
    ASSERT_TRUE(check);
    EXPECT_TRUE(check->isChecked());
    ASSERT_TRUE(waitUntil([check] { return check->isActiveWindow(); }));
    Hands::key("alt+n");
    EXPECT_TRUE(waitUntil([check] { return !check->isChecked(); }));
    Hands::key("Return");
    ASSERT_TRUE(waitUntil([this] { return !part<QDialog>("_winPref"); }));
    EXPECT_FALSE(Config().checkVersion());

    controller.reset();
    open(); // the next start
    aMoment();
    EXPECT_EQ(server.requests().size(), 1U);
}
