// Writes a player to try the programs on: as a plain folder, which can also be mounted.

#include "Base/PathName.h"
#include "Base/Utility.h"
#include "support/LargeLibrary.h"
#include "support/SamplePhone.h"
#include "support/SamplePlayer.h"

#include <QDir>
#include <QSaveFile>

#include <CLI/CLI.hpp>

#include <cstdio>
#include <map>
#include <string>

namespace
{
constexpr int UsageError = 2;
constexpr int MostTracks = 1'000'000;

QString writeLargeITunesDb(const QString& folder, int trackCount)
{
    const QString library = PathName::join(folder, u"iPod_Control/iTunes");
    const QString problem = Utility::createFolder(library);
    if (!problem.isEmpty())
        return problem;
    QSaveFile file(PathName::join(library, u"iTunesDB"));
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    file.write(largeITunesDb(trackCount));
    return file.commit() ? QString() : file.errorString();
}

QString writeLarge(const QString& folder, int trackCount, SamplePlayer::Format format)
{
    return format == SamplePlayer::Format::ITunesDb
               ? writeLargeITunesDb(folder, trackCount)
               : SamplePlayer::writeLibrary(folder, largeLibrary(trackCount), format);
}

int report(const QString& folder, const QString& problem)
{
    if (!problem.isEmpty()) {
        std::fprintf(stderr, "make-sample-player: %s\n", qPrintable(problem));
        return 1;
    }
    std::printf("It stands in %s\n", qPrintable(folder));
    return 0;
}
} // namespace

int main(int argc, char** argv)
{
    CLI::App app("Writes a sample player, or a sample phone, into a folder");
    std::string folderArgument;
    bool phone = false;
    int trackCount = 0;
    app.add_option("DIR", folderArgument, "The folder: a new or an empty one")->required();
    auto* tracks = app.add_option("--tracks", trackCount,
                                  "Write a generated library of so many tracks, without media "
                                  "files");
    tracks->check(CLI::Range(1, MostTracks));
    auto format = SamplePlayer::Format::ITunesDb;
    auto* formats = app.add_option("--format", format, "How the player keeps its library");
    formats->transform(CLI::CheckedTransformer(
        std::map<std::string, SamplePlayer::Format>{
            {"itunesdb", SamplePlayer::Format::ITunesDb},
            {"library", SamplePlayer::Format::Library},
            {"medialibrary", SamplePlayer::Format::MediaLibrary}},
        CLI::ignore_case));
    app.add_flag("--phone", phone, "Write a whole phone, for simulated-phone to play")
        ->excludes(tracks)
        ->excludes(formats);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : UsageError;
    }

    const QString folder = QDir(QString::fromStdString(folderArgument)).absolutePath();
    if (!QDir(folder).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot) &&
        QDir(folder).exists()) {
        std::fprintf(stderr, "make-sample-player: %s is not empty\n", qPrintable(folder));
        return UsageError;
    }
    if (phone)
        return report(folder, SamplePhone::write(folder));
    return report(folder, trackCount > 0 ? writeLarge(folder, trackCount, format)
                                         : SamplePlayer::write(folder, format));
}
