#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

class QObject;

/// The library and the playlists of the person's music application. An application is one class
/// behind this interface and one line in the list in `MusicLibrary.cpp`.
///
/// The calls block, each within a time limit; make them on a job's thread, all on the same.
class MusicLibrary
{
public:
    enum class Outcome {
        Done,
        SmartPlaylist, ///< the playlist is filled by rules, and takes nothing else
        Refused,       ///< the application answered, and would not
        NoAnswer,      ///< it is not there any more, or took too long
        Stopped        ///< the caller did not want to wait any longer
    };
    /// Asked while a call waits; true ends the wait.
    using Stop = std::function<bool()>;

    /// The application that this computer has; null without one.
    static std::unique_ptr<MusicLibrary> create();
    /// Finds out, without blocking, what that application is called: `found` gets its name, or
    /// an empty text, and nothing once `context` is gone. On the window's thread.
    static void findApplication(QObject* context, std::function<void(const QString& name)> found);

    MusicLibrary() = default;
    virtual ~MusicLibrary() = default;
    MusicLibrary(const MusicLibrary&) = delete;
    MusicLibrary& operator=(const MusicLibrary&) = delete;

    /// What a person calls the application.
    [[nodiscard]] virtual QString name() const = 0;
    /// Starts the application where it does not run, and waits until its library is there.
    virtual Outcome open(const Stop& stop) = 0;
    /// Adds a file to the library, where it stays in its place.
    virtual Outcome add(const QString& path, const Stop& stop) = 0;
    /// The names of all playlists, smart ones included; no list when there is no answer.
    virtual std::optional<QStringList> playlists() = 0;
    /// Where a new playlist stands among the others is for the application to say.
    virtual Outcome createPlaylist(const QString& name) = 0;
    /// Adds a file of the library to a playlist that is there.
    virtual Outcome addToPlaylist(const QString& path, const QString& name) = 0;
};
