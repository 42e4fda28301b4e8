// What a program that died leaves for its next run. Each is a process of its own.

#include "Base/Utility.h"
#include "Window/Crash/CrashFile.h"
#include "Window/Crash/MemoryMap.h"
#include "support/EventLoop.h"
#include "support/Files.h"
#include "support/PrivateMounts.h"

#include <QProcess>

#include <csignal>

namespace
{
class LastRunTest : public testing::Test
{
protected:
    int run(const QString& way)
    {
        QProcess process;
        process.start(_program, {_folder.path(), way});
        EXPECT_TRUE(process.waitForFinished(60'000));
        _output = QString::fromUtf8(process.readAllStandardOutput());
        return process.exitStatus() == QProcess::CrashExit ? -1 : process.exitCode();
    }
    /// Has it die, and gives what the next run shows.
    QString dieOf(const QString& way)
    {
        EXPECT_NE(run(way), 0) << "it did not die";
        EXPECT_EQ(files().size(), 1);
        EXPECT_EQ(run("show"), 0);
        return _output;
    }
    [[nodiscard]] QStringList files() const
    {
        return QDir(_folder.path()).entryList(QDir::Files | QDir::Hidden);
    }
    [[nodiscard]] QString folder() const { return _folder.path(); }
    [[nodiscard]] QString output() const { return _output; }

    static QString head(const QString& name, const QString& reason)
    {
        return "Unexpected Error\n"
               "Zell iPod iPhone Transfer has encountered an unexpected error. Please email this "
               "report to support@zell.example so it can be fixed in the next release.\n\n" +
               name + "\n\n" + reason + "\n\nStack Trace:\n";
    }

    QString _program = QStringLiteral(ZELL_CRASHING_PROGRAM);

private:
    QTemporaryDir _folder;
    QString _output;
};

/// The program as it is installed: without symbols, which a package of their own puts where
/// debuggers look for them, and with or without the names of its functions.
class StrippedProgram
{
public:
    enum class Names { Kept, Gone };

    explicit StrippedProgram(Names names)
    {
        EXPECT_TRUE(QFile::copy(QStringLiteral(ZELL_CRASHING_PROGRAM), path()));
        if (names == Names::Kept)
            change(QStringLiteral(ZELL_PACKAGING "/keep-names"), {path()});
        const QString id = buildId();
        const QString symbols = _folder.filePath("symbols/" + id.first(2));
        QDir().mkpath(symbols);
        change("objcopy", {"--only-keep-debug", path(), symbols + '/' + id.mid(2) + ".debug"});
        change("strip", {path()});
    }

    [[nodiscard]] QString path() const { return _folder.filePath("program"); }
    void installSymbols()
    {
        _symbols = PrivateMounts::Mount::memory("/usr/lib/debug", 1 << 20);
        QDir().mkpath("/usr/lib/debug/.build-id");
        _installed =
            PrivateMounts::Mount::bind(_folder.filePath("symbols"), "/usr/lib/debug/.build-id");
    }

private:
    static QByteArray change(const QString& tool, const QStringList& arguments)
    {
        QProcess process;
        process.start(tool, arguments);
        EXPECT_TRUE(process.waitForFinished(60'000));
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return process.readAllStandardOutput();
    }
    [[nodiscard]] QString buildId() const
    {
        const QByteArray notes = change("readelf", {"--notes", path()});
        const qsizetype begin = notes.indexOf("Build ID: ") + 10;
        return QString::fromLatin1(notes.mid(begin, notes.indexOf('\n', begin) - begin));
    }

    QTemporaryDir _folder;
    std::unique_ptr<PrivateMounts::Mount> _symbols;
    std::unique_ptr<PrivateMounts::Mount> _installed;
};

/// Whether a program has come so far that it handles the signals of faults. SIGABRT stands for
/// them: nobody else handles that one.
bool handlesFaults(qint64 program)
{
    QFile status(QString("/proc/%1/status").arg(program));
    if (!status.open(QIODevice::ReadOnly))
        return false;
    const QByteArray text = status.readAll();
    const qsizetype caught = text.indexOf("SigCgt:");
    const quint64 signalSet =
        text.mid(caught).split('\n')[0].split('\t').value(1).toULongLong(nullptr, 16);
    return caught >= 0 && (signalSet >> (SIGABRT - 1) & 1U) != 0;
}
} // namespace

TEST_F(LastRunTest, ASegmentationFaultIsShownAtTheNextStart)
{
    const QString shown = dieOf("segv");
    EXPECT_TRUE(shown.startsWith(head("SIGSEGV", "Segmentation fault"))) << shown.toStdString();
    EXPECT_TRUE(shown.contains("(anonymous namespace)::writeToNoAddress()\n"))
        << shown.toStdString();
    EXPECT_TRUE(shown.contains("\nmain\n")) << shown.toStdString();
}

TEST_F(LastRunTest, NamesTheFunctionsOfAnInstalledProgram)
{
    const StrippedProgram stripped(StrippedProgram::Names::Kept);
    _program = stripped.path();
    const QString shown = dieOf("segv");
    EXPECT_TRUE(shown.contains("(anonymous namespace)::writeToNoAddress()\n"))
        << shown.toStdString();
    EXPECT_TRUE(shown.contains("\nmain\n")) << shown.toStdString();
}

TEST_F(LastRunTest, NamesTheFunctionsOfAStrippedProgramWhereItsSymbolsAreInstalled)
{
    StrippedProgram stripped(StrippedProgram::Names::Gone);
    _program = stripped.path();
    EXPECT_FALSE(dieOf("segv").contains("writeToNoAddress"));
    stripped.installSymbols();
    const QString shown = dieOf("segv");
    for (const char* function : {"writeToNoAddress", "dieOf", "main"})
        EXPECT_TRUE(shown.contains(function)) << function << " in " << shown.toStdString();
}

TEST_F(LastRunTest, IsShownOnce)
{
    dieOf("segv");
    EXPECT_TRUE(files().isEmpty());
    EXPECT_EQ(run("show"), 0);
    EXPECT_EQ(output(), "");
}

TEST_F(LastRunTest, AFaultOnAThreadIsShownAtTheNextStart)
{
    const QString shown = dieOf("segv-in-thread");
    EXPECT_TRUE(shown.startsWith(head("SIGSEGV", "Segmentation fault"))) << shown.toStdString();
    EXPECT_TRUE(shown.contains("writeToNoAddress()\n")) << shown.toStdString();
}

TEST_F(LastRunTest, AnAbortIsShownAtTheNextStart)
{
    const QString shown = dieOf("abort");
    EXPECT_TRUE(shown.startsWith(head("SIGABRT", "Aborted"))) << shown.toStdString();
    EXPECT_TRUE(shown.contains("abortOnPurpose()")) << shown.toStdString();
}

TEST_F(LastRunTest, AFullStackIsShownAtTheNextStart)
{
    const QString shown = dieOf("stack");
    EXPECT_TRUE(shown.startsWith(head("SIGSEGV", "Segmentation fault"))) << shown.toStdString();
    EXPECT_TRUE(shown.contains("fillTheStack(int)")) << shown.toStdString();
}

TEST_F(LastRunTest, AnExceptionThatLeavesAThreadIsShownAtTheNextStart)
{
    const QString shown = dieOf("thread");
    EXPECT_TRUE(shown.startsWith(head("std::out_of_range", "nothing at 7"))) << shown.toStdString();
    EXPECT_TRUE(shown.contains("throwFromALibraryType()")) << shown.toStdString();
}

TEST_F(LastRunTest, AnExceptionThatMayNotLeaveAFunctionIsShownAtTheNextStart)
{
    const QString shown = dieOf("noexcept");
    EXPECT_TRUE(shown.startsWith(head("NSRangeException", "4 bytes at 13 of 16")))
        << shown.toStdString();
    EXPECT_TRUE(shown.contains("throwOurOwn()")) << shown.toStdString();
}

TEST_F(LastRunTest, AProgramThatEndsItselfIsShownAtTheNextStart)
{
    const QString shown = dieOf("terminate");
    EXPECT_TRUE(shown.startsWith(head("std::terminate", "The program ended itself.")))
        << shown.toStdString();
    EXPECT_TRUE(shown.contains("dieOf(QString const&)")) << shown.toStdString();
}

TEST_F(LastRunTest, TheDesktopProgramLeavesAReportAndTakesItAtItsNextStart)
{
    const QDir crashes(CrashFile::folder());
    QProcess program;
    program.start(QStringLiteral(ZELL_PROGRAMS "/zell-transfer"), QStringList());
    ASSERT_TRUE(waitUntil([&] { return handlesFaults(program.processId()); }));
    kill(pid_t(program.processId()), SIGSEGV);
    ASSERT_TRUE(program.waitForFinished());
    ASSERT_EQ(crashes.entryList(QDir::Files).size(), 1);

    program.start();
    EXPECT_TRUE(waitUntil([&] { return crashes.isEmpty(QDir::Files); }));
    EXPECT_EQ(program.state(), QProcess::Running);
    program.kill();
    program.waitForFinished();
}

TEST_F(LastRunTest, AGoodEndLeavesNothing)
{
    EXPECT_EQ(run("well"), 0);
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(LastRunTest, ReportsLieBesideTheLogAndSurviveItsClearing)
{
    EXPECT_EQ(QFileInfo(CrashFile::folder()).path(), QFileInfo(Utility::logFolder()).path());
    Files::write(CrashFile::folder() + "/1.crash", "x");
    Utility::clearLog();
    EXPECT_TRUE(QFile::exists(CrashFile::folder() + "/1.crash"));
}

TEST_F(LastRunTest, WhatCanBeReadOfADamagedReportIsKept)
{
    EXPECT_NE(run("segv"), 0);
    ASSERT_EQ(files().size(), 1);
    const QString path = folder() + u'/' + files().first();
    const QByteArray whole = Files::read(path);
    for (qsizetype cut = 0; cut < 1000; ++cut) {
        Files::write(path, whole.first(cut));
        const auto reports = CrashFile::takeAll(folder());
        ASSERT_EQ(reports.size(), 1U);
        EXPECT_TRUE(QString("SIGSEGV").startsWith(reports[0].name));
        EXPECT_TRUE(QString("Segmentation fault").startsWith(reports[0].reason));
        EXPECT_FALSE(reports[0].callStackReturnAddresses.empty());
    }
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(LastRunTest, ManyReportsAreNotAllShown)
{
    for (int i = 0; i < 50; ++i)
        Files::write(folder() + QString("/%1.crash").arg(i), "name");
    EXPECT_LE(CrashFile::takeAll(folder()).size(), 8U);
    EXPECT_TRUE(files().isEmpty());
}

TEST(MemoryMapTest, FindsAPlaceAgainWhereItsFileIsLoadedNow)
{
    const MemoryMap then("1000-3000 r-xp 00005000 08:01 77 /lib/a b.so\n"
                         "8000-9000 r-xp 00000000 08:01 78 /lib/c.so\n"
                         "a000-b000 rw-p 00000000 08:01 77 /lib/a b.so\n");
    const MemoryMap now("f000-12000 r-xp 00004000 08:01 77 /lib/a b.so\n"
                        "20000-21000 r-xp 00000000 08:01 99 /lib/c.so\n");
    EXPECT_EQ(now.samePlace(then, 0x1010), reinterpret_cast<void*>(0x10010));
    EXPECT_EQ(now.samePlace(then, 0x2fff), reinterpret_cast<void*>(0x11fff));
    EXPECT_EQ(now.samePlace(then, 0x3000), nullptr); // past the end
    EXPECT_EQ(now.samePlace(then, 0x8010), nullptr); // another file of that name
    EXPECT_EQ(now.samePlace(then, 0xa010), nullptr); // no code
}

TEST(MemoryMapTest, LeavesOutDamagedLines)
{
    const MemoryMap damaged(
        "\n-\nzz-yy r-xp 0 0 0 /x\n9000-1000 r-xp 0 0:0 1 /x\n1000 r-xp 0 0 1 /x\n"
        "1000-2000 r-xp /x\nffffffffffffffff-ffffffffffffffff r-xp 0 0 0 /x\n");
    for (const quint64 address : {0ULL, 0x1500ULL, ~0ULL})
        EXPECT_EQ(damaged.samePlace(damaged, address), nullptr);
}
