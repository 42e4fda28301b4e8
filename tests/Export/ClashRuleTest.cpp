#include "Export/ClashRule.h"

#include "Export/Config.h"
#include "Platform/Folder.h"
#include "support/Files.h"
#include "support/ScriptedHost.h"

#include <gtest/gtest.h>

namespace
{
class ClashRuleTest : public testing::Test
{
protected:
    ClashRuleTest() { Files::write(path("a.mp3"), "there"); }

    QString path(const QString& name) const { return _folder.filePath(name); }
    Folder folder() const { return std::move(*Folder::open(_folder.path())); }
    /// The path that something is written to, or what else becomes of it.
    QString check(const QString& name)
    {
        const Destination destination = ClashRule(config, host).checkPath(folder(), path(name));
        switch (destination.kind) {
        case Destination::Kind::New:
            return destination.path;
        case Destination::Kind::Replace:
            return "replace " + destination.path;
        case Destination::Kind::Skip:
            return "skip";
        case Destination::Kind::Cancel:
            return "cancel";
        }
        return {};
    }
    QString available(const QString& name)
    {
        return ClashRule(config, host).availablePath(folder(), path(name));
    }

    Config config;
    ScriptedHost host;

private:
    QTemporaryDir _folder;
};
} // namespace

TEST_F(ClashRuleTest, IsNotConsultedWhereNothingExists)
{
    for (const int rule : {0, 1, 2, 3, 9}) {
        config.setCopyRule(rule);
        EXPECT_EQ(check("new.mp3"), path("new.mp3"));
    }
    EXPECT_TRUE(host.asked.isEmpty());
}

TEST_F(ClashRuleTest, FollowsTheSetting)
{
    config.setCopyRule(KeepBothRule);
    EXPECT_EQ(check("a.mp3"), path("a1.mp3"));
    config.setCopyRule(OverwriteRule);
    EXPECT_EQ(check("a.mp3"), "replace " + path("a.mp3"));
    config.setCopyRule(SkipRule);
    EXPECT_EQ(check("a.mp3"), "skip");
    config.setCopyRule(9);
    EXPECT_EQ(check("a.mp3"), "replace " + path("a.mp3"));
    EXPECT_TRUE(host.asked.isEmpty());
}

TEST_F(ClashRuleTest, AsksEachTimeAndAppliesTheAnswerOnce)
{
    host.clashAnswer = ClashAnswer{SkipRule, false};
    EXPECT_EQ(check("a.mp3"), "skip");
    host.clashAnswer = ClashAnswer{KeepBothRule, false};
    EXPECT_EQ(check("a.mp3"), path("a1.mp3"));
    EXPECT_EQ(host.asked, QStringList({path("a.mp3"), path("a.mp3")}));
    EXPECT_EQ(config.copyRule(), AskRule);
    EXPECT_EQ(Config().copyRule(), AskRule);
}

TEST_F(ClashRuleTest, StoresAnAnswerThatIsToBeRemembered)
{
    host.clashAnswer = ClashAnswer{OverwriteRule, true};
    EXPECT_EQ(check("a.mp3"), "replace " + path("a.mp3"));
    EXPECT_EQ(check("a.mp3"), "replace " + path("a.mp3"));
    EXPECT_EQ(host.asked.size(), 1);
    EXPECT_EQ(Config().copyRule(), OverwriteRule);
}

TEST_F(ClashRuleTest, EndsTheExportWithoutAnAnswer)
{
    host.clashAnswer = std::nullopt;
    EXPECT_EQ(check("a.mp3"), "cancel");
}

TEST_F(ClashRuleTest, TakesALinkToNowhereForAnExistingFile)
{
    ASSERT_TRUE(QFile::link(path("nowhere"), path("link.mp3")));
    config.setCopyRule(SkipRule);
    EXPECT_EQ(check("link.mp3"), "skip");
}

TEST_F(ClashRuleTest, AsksInTheseWords)
{
    EXPECT_EQ(ClashRule::question("/a/b.mp3"), "File \"/a/b.mp3\" already exist.");
}

TEST_F(ClashRuleTest, CountsUpToTheFirstFreeName)
{
    Files::write(path("b.m4a"), "");
    Files::write(path("b1.m4a"), "");
    EXPECT_EQ(available("b.m4a"), path("b2.m4a"));
    EXPECT_EQ(available("free.m4a"), path("free1.m4a"));
}

TEST_F(ClashRuleTest, AddsNoDotWhereThereIsNoExtension)
{
    EXPECT_EQ(available("T."), path("T1"));
    EXPECT_EQ(available("T"), path("T1"));
    EXPECT_EQ(available(".mp3"), path(".mp31"));
    EXPECT_EQ(available("a.b.mp3"), path("a.b1.mp3"));
}

TEST_F(ClashRuleTest, TriesEachNumberOnceInAnExport)
{
    ClashRule rule(config, host);
    const Folder there = folder();
    for (int i = 1; i <= 3; ++i) {
        const QString free = rule.availablePath(there, path("a.mp3"));
        EXPECT_EQ(free, path(QString("a%1.mp3").arg(i)));
        Files::write(free, "");
    }
    EXPECT_TRUE(QFile::remove(path("a1.mp3")));
    EXPECT_EQ(rule.availablePath(there, path("a.mp3")), path("a4.mp3"));
    EXPECT_EQ(rule.availablePath(there, path("b.mp3")), path("b1.mp3"));
}
