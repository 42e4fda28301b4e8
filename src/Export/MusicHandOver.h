#pragma once

#include "Platform/MusicLibrary.h"

#include <QCoreApplication>
#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class ExportReport;
struct Playlist;

/// Hands the files of one export over to the music application: into its library, and into its
/// playlists of the same names. What fails becomes a line of the report, and the export goes on.
/// On the job's thread.
class MusicHandOver
{
    Q_DECLARE_TR_FUNCTIONS(MusicHandOver)

public:
    using Create = std::function<std::unique_ptr<MusicLibrary>()>;

    /// Nothing is asked before the first file. The report outlives the object.
    explicit MusicHandOver(ExportReport& report, Create create = MusicLibrary::create);
    ~MusicHandOver();

    /// Adds an exported file, and gives it to each of the playlists, in order; those that are
    /// missing are made, and smart ones left alone. `stop` ends the waiting.
    void handOver(const QString& path, const std::vector<Playlist*>& playlists,
                  const MusicLibrary::Stop& stop);

private:
    using Outcome = MusicLibrary::Outcome;

    /// Whether the library is there; it is opened when needed.
    bool ready(const QString& path, const MusicLibrary::Stop& stop);
    void addToPlaylist(const QString& path, const QString& name);
    /// Whether the application has a playlist of this name now, made if needed.
    bool hasPlaylist(const QString& path, const QString& name, const QString& refusal);
    /// Whether a step succeeded; reports it when it did not.
    bool succeeded(Outcome outcome, const QString& path, const QString& refusal);
    void report(const QString& path, const QString& why);
    void lose();
    [[nodiscard]] QString noAnswer() const;

    ExportReport& _report;
    Create _create;
    std::unique_ptr<MusicLibrary> _library;
    bool _isOpen = false;
    /// The playlists that the application has; none until it was asked.
    std::optional<QStringList> _playlists;
    QSet<QString> _smart; ///< those of them that are filled by rules
    int _losses = 0;      ///< files in a row for which there was no answer
};
