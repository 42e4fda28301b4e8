#pragma once

#include "Platform/MusicLibrary.h"

#include <QVariantList>

class QDBusConnection;
class QDBusMessage;

/// Rhythmbox, by its D-Bus interface. It knows a file by its address, and lists a file once in
/// the library and once in a playlist, however often it is added.
class RhythmboxLibrary final : public MusicLibrary
{
public:
    /// The name by which the bus starts it.
    static QString service();
    static QString applicationName();
    static std::unique_ptr<MusicLibrary> make(const QDBusConnection& bus);

    explicit RhythmboxLibrary(const QDBusConnection& bus);
    ~RhythmboxLibrary() override;

    [[nodiscard]] QString name() const override { return applicationName(); }
    Outcome open(const Stop& stop) override;
    /// A file that cannot be read as sound or film is refused.
    Outcome add(const QString& path, const Stop& stop) override;
    std::optional<QStringList> playlists() override;
    /// New playlists stand where Rhythmbox sorts them: it has no place "at the head" to ask for.
    Outcome createPlaylist(const QString& name) override;
    Outcome addToPlaylist(const QString& path, const QString& name) override;

private:
    QDBusMessage callPlaylists(const QString& method, const QVariantList& arguments);
    Outcome loadUri(const QString& address);
    /// Whether the library lists the file by now, has refused it, or says nothing yet.
    std::optional<Outcome> lookUp(const QString& address);

    std::unique_ptr<QDBusConnection> _bus;
};
