#include "support/ConsoleRun.h"
#include "support/SamplePlayer.h"

#include <gtest/gtest.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

namespace
{
const QByteArray Prompt = "answers for all:";

/// One run of the real console program on a terminal of its own, with a person who types the
/// given answers one after another.
struct TerminalRun {
    TerminalRun(const QStringList& arguments, const QByteArrayList& answers)
    {
        std::vector<std::string> words = {ConsoleRun::program().toStdString()};
        for (const QString& argument : arguments)
            words.push_back(argument.toStdString());
        std::vector<char*> pointers;
        for (std::string& word : words)
            pointers.push_back(word.data());
        pointers.push_back(nullptr);

        int terminal = -1;
        const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
        if (child == 0) {
            execv(pointers[0], pointers.data());
            _exit(127);
        }
        EXPECT_GT(child, 0);
        converse(terminal, answers);
        int status = 0;
        waitpid(child, &status, 0);
        close(terminal);
        EXPECT_TRUE(WIFEXITED(status));
        exitCode = WEXITSTATUS(status);
    }

    [[nodiscard]] int questions() const { return int(shown.count(Prompt)); }

    int exitCode = -1;
    QByteArray shown;

private:
    /// Reads until the program has left the terminal.
    void converse(int terminal, const QByteArrayList& answers)
    {
        char bytes[4096];
        qsizetype answered = 0;
        for (;;) {
            const ssize_t count = read(terminal, bytes, sizeof bytes);
            if (count <= 0)
                return;
            shown.append(bytes, count);
            if (questions() > answered) {
                // A question too many is given up, so that it shows instead of waiting.
                const QByteArray line = answers.value(answered++, "a") + '\n';
                EXPECT_EQ(write(terminal, line.constData(), std::size_t(line.size())), line.size());
            }
        }
    }
};

class ClashQuestion : public testing::Test
{
protected:
    ClashQuestion()
    {
        EXPECT_EQ(SamplePlayer::write(path("player")), "");
        EXPECT_EQ(ConsoleRun(command()).exitCode, 0);
        for (const QJsonObject& item : report())
            _first.append(item["to"].toString());
    }

    QString path(const QString& name) const { return _folder.filePath(name); }
    QStringList command() const
    {
        return {"export",    "--device", path("player"), "--to",
                path("out"), "--report", path("report"), "movies"};
    }
    std::vector<QJsonObject> report() const { return readReport(path("report")); }
    QStringList results() const
    {
        QStringList all;
        for (const QJsonObject& item : report())
            all.append(item["result"].toString());
        return all;
    }

    /// Where the six films went when nothing was there yet.
    QStringList _first;

private:
    QTemporaryDir _folder;
};
} // namespace

TEST_F(ClashQuestion, IsAskedForEachFile)
{
    const TerminalRun run(command(), {"n", "o", "s", "n", "o", "s"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.questions(), 6);
    EXPECT_TRUE(run.shown.contains(_first[0].toUtf8()));
    EXPECT_EQ(results(),
              QStringList({"copied", "copied", "skipped", "copied", "copied", "skipped"}));
    EXPECT_EQ(report()[0]["to"].toString(), QString(_first[0]).replace(".mov", "1.mov"));
    EXPECT_EQ(report()[1]["to"].toString(), _first[1]);
}

TEST_F(ClashQuestion, IsAskedAgainAfterAnAnswerThatIsNone)
{
    const TerminalRun run(command(), {"what?", "S"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.questions(), 2);
}

TEST_F(ClashQuestion, IsAskedNoMoreAfterAnAnswerForAll)
{
    const TerminalRun run(command(), {"o", "S"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.questions(), 2);
    EXPECT_EQ(results().count("skipped"), 5);
    // It holds for the one run: the next one asks again.
    EXPECT_EQ(TerminalRun(command(), {"S"}).questions(), 1);
}

TEST_F(ClashQuestion, EndsTheExportWhenGivenUp)
{
    const TerminalRun run(command(), {"s", "a"});
    EXPECT_EQ(run.exitCode, 130);
    EXPECT_EQ(results().count("skipped"), 1);
    EXPECT_EQ(results().count("stopped"), 5);
}

TEST_F(ClashQuestion, EndsTheWholeCommandWhenGivenUp)
{
    const TerminalRun run(command() + QStringList({"ringtones", "photos"}), {"a"});
    EXPECT_EQ(run.exitCode, 130);
    EXPECT_EQ(run.questions(), 1);
    EXPECT_EQ(results().count("stopped"), 6 + 8 + 12);
    EXPECT_FALSE(QFileInfo::exists(path("out/Ringtones")));
}

TEST_F(ClashQuestion, TakesAnInterruptForAnAnswer)
{
    const TerminalRun run(command(), {"\x03"}); // Ctrl-C, as a terminal sends it
    EXPECT_EQ(run.exitCode, 130);
    EXPECT_EQ(run.questions(), 1);
    EXPECT_EQ(results().count("stopped"), 6);
}

TEST_F(ClashQuestion, IsNotAskedWhereTheRuleIsGiven)
{
    const TerminalRun run(command() + QStringList({"--clash", "skip"}), {});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.questions(), 0);
    EXPECT_EQ(results().count("skipped"), 6);
    EXPECT_TRUE(run.shown.contains("] 1/6 ")) << "the bar of a terminal";
}
