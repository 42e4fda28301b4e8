// Whether the completions of the shells offer what the program takes.

#include "Console/Categories.h"
#include "support/ConsoleRun.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

namespace
{
const QStringList Commands = {"devices", "list", "dump", "export"};

QString completion(const QString& file)
{
    return QString::fromUtf8(Files::read(QStringLiteral(ZELL_COMPLETIONS "/") + file));
}

/// What the program itself says that it takes: the words of its help that match.
QStringList inHelp(const QStringList& arguments, const QString& pattern)
{
    const QString help = ConsoleRun(arguments + QStringList("--help")).text();
    QStringList words;
    QRegularExpressionMatchIterator all = QRegularExpression(pattern).globalMatch(help);
    while (all.hasNext())
        words.append(all.next().captured(1));
    words.removeDuplicates();
    return words;
}

QStringList options(const QString& command)
{
    const QStringList found = inHelp({command}, "(--[a-z-]+)");
    EXPECT_GE(found.size(), 3) << command.toStdString();
    return found;
}

/// What bash offers for the last of the words.
QStringList offered(const QStringList& words)
{
    QProcess bash;
    bash.start("bash", QStringList({"--norc", "-c",
                                    ". " ZELL_COMPLETIONS "/zell-transfer-cli.bash\n"
                                    "COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1))\n"
                                    "_zell_transfer_cli; printf '%s\\n' \"${COMPREPLY[@]}\"",
                                    "bash", "zell-transfer-cli"}) +
                           words);
    EXPECT_TRUE(bash.waitForFinished(30000));
    EXPECT_EQ(bash.readAllStandardError(), "");
    return QString::fromUtf8(bash.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
}

bool hasWord(const QString& text, const QString& word)
{
    return QRegularExpression("(?<![\\w-])" + QRegularExpression::escape(word) + "(?![\\w-])")
        .match(text)
        .hasMatch();
}
} // namespace

TEST(BashCompletion, OffersEveryCommand)
{
    const QStringList known = inHelp({}, "\n  ([a-z]+) ");
    EXPECT_EQ(known, Commands);
    const QStringList all = offered({""});
    for (const QString& command : known)
        EXPECT_TRUE(all.contains(command)) << command.toStdString();
    EXPECT_EQ(offered({"ex"}), QStringList("export"));
}

TEST(BashCompletion, OffersEveryOptionAndNoOther)
{
    for (const QString& command : Commands) {
        QStringList expected = options(command);
        QStringList all = offered({command, "--"});
        expected.sort();
        all.sort();
        EXPECT_EQ(all, expected) << command.toStdString();
    }
}

TEST(BashCompletion, OffersEveryCategoryAndWord)
{
    const QStringList listed = offered({"list", ""});
    for (const QString& name : Categories::names())
        EXPECT_TRUE(listed.contains(name)) << name.toStdString();
    const QStringList exported = offered({"export", ""});
    for (const QString& word : Categories::words() + QStringList({"playlist=", "album="}))
        EXPECT_TRUE(exported.contains(word)) << word.toStdString();
}

TEST(BashCompletion, OffersRulesAndFolders)
{
    EXPECT_EQ(offered({"export", "all", "--clash", ""}),
              QStringList({"number", "overwrite", "skip"}));
    const QTemporaryDir folder;
    QDir(folder.path()).mkdir("inside of it");
    EXPECT_EQ(offered({"export", "--to", folder.path() + "/"}),
              QStringList(folder.path() + "/inside of it"));
}

TEST(ZshCompletion, NamesAll)
{
    const QString text = completion("_zell-transfer-cli");
    for (const QString& command : Commands) {
        EXPECT_TRUE(text.contains("'" + command + ":") || text.contains("\"" + command + ":"))
            << command.toStdString();
        for (const QString& option : options(command))
            EXPECT_TRUE(hasWord(text, option)) << option.toStdString();
    }
    for (const QString& word : Categories::words())
        EXPECT_TRUE(hasWord(text, word)) << word.toStdString();
}

TEST(FishCompletion, NamesAll)
{
    const QString text = completion("zell-transfer-cli.fish");
    for (const QString& command : Commands) {
        EXPECT_TRUE(text.contains(" -a " + command + " ")) << command.toStdString();
        for (const QString& option : options(command))
            EXPECT_TRUE(text.contains("-l " + option.sliced(2) + " ")) << option.toStdString();
    }
    for (const QString& word : Categories::words())
        EXPECT_TRUE(hasWord(text, word)) << word.toStdString();
}
