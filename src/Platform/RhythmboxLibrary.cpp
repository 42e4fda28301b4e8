#include "Platform/RhythmboxLibrary.h"

#include "Platform/SessionBus.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QThread>
#include <QUrl>
#include <QVariantMap>

namespace
{
constexpr int StartMilliseconds = 20'000; ///< a program that starts on a busy computer
/// It answers before it has read its playlists, and then lists none. Somebody may really have
/// none, so this is not waited for without end.
constexpr int PlaylistMilliseconds = 5'000;
constexpr int AddMilliseconds = 10'000;
constexpr int PauseMilliseconds = 50;

const QString Service = QStringLiteral("org.gnome.Rhythmbox3");
const QString Path = QStringLiteral("/org/gnome/Rhythmbox3");

/// The parameter of the action "load-uri": an address, and whether to play it at once.
struct LoadUri {
    QString address;
    bool play = false;
};

QDBusArgument& operator<<(QDBusArgument& out, const LoadUri& value)
{
    out.beginStructure();
    out << value.address << value.play;
    out.endStructure();
    return out;
}

const QDBusArgument& operator>>(const QDBusArgument& in, LoadUri& value)
{
    in.beginStructure();
    in >> value.address >> value.play;
    in.endStructure();
    return in;
}

/// The address as the desktop's own library writes it: Rhythmbox looks addresses up letter by
/// letter, and another spelling of the same one is not found.
QString addressOf(const QString& path)
{
    const QByteArray plain = "/!$&'()*+,=:@~-._";
    return QStringLiteral("file://") +
           QString::fromLatin1(QUrl::toPercentEncoding(QFileInfo(path).absoluteFilePath(), plain));
}

bool isError(const QDBusMessage& answer)
{
    return answer.type() != QDBusMessage::ReplyMessage;
}

MusicLibrary::Outcome outcomeOf(const QDBusMessage& answer)
{
    if (!isError(answer))
        return MusicLibrary::Outcome::Done;
    static const QStringList nobodyThere = {
        QStringLiteral("org.freedesktop.DBus.Error.NoReply"),
        QStringLiteral("org.freedesktop.DBus.Error.Timeout"),
        QStringLiteral("org.freedesktop.DBus.Error.TimedOut"),
        QStringLiteral("org.freedesktop.DBus.Error.Disconnected"),
        QStringLiteral("org.freedesktop.DBus.Error.ServiceUnknown"),
        QStringLiteral("org.freedesktop.DBus.Error.NameHasNoOwner")};
    return nobodyThere.contains(answer.errorName()) ? MusicLibrary::Outcome::NoAnswer
                                                    : MusicLibrary::Outcome::Refused;
}
} // namespace

Q_DECLARE_METATYPE(LoadUri)

QString RhythmboxLibrary::service()
{
    return Service;
}

QString RhythmboxLibrary::applicationName()
{
    return QStringLiteral("Rhythmbox");
}

std::unique_ptr<MusicLibrary> RhythmboxLibrary::make(const QDBusConnection& bus)
{
    return std::make_unique<RhythmboxLibrary>(bus);
}

RhythmboxLibrary::RhythmboxLibrary(const QDBusConnection& bus)
    : _bus(std::make_unique<QDBusConnection>(bus))
{
    qDBusRegisterMetaType<LoadUri>();
}

RhythmboxLibrary::~RhythmboxLibrary() = default;

MusicLibrary::Outcome RhythmboxLibrary::open(const Stop& stop)
{
    QDBusMessage start = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("StartServiceByName"));
    start << Service << quint32(0);
    const bool started = !isError(_bus->call(start, QDBus::Block, StartMilliseconds));
    std::optional<QStringList> names = playlists();
    // It may run although nothing can start it.
    if (!started && !names)
        return Outcome::NoAnswer;

    const QDeadlineTimer deadline(PlaylistMilliseconds);
    while ((!names || names->isEmpty()) && !deadline.hasExpired()) {
        if (stop())
            return Outcome::Stopped;
        QThread::msleep(PauseMilliseconds);
        names = playlists();
    }
    return names ? Outcome::Done : Outcome::NoAnswer;
}

MusicLibrary::Outcome RhythmboxLibrary::add(const QString& path, const Stop& stop)
{
    const QString address = addressOf(path);
    if (const Outcome loaded = loadUri(address); loaded != Outcome::Done)
        return loaded;
    // The call only asks for the file to be read; playlists take it once the library has it.
    const QDeadlineTimer deadline(AddMilliseconds);
    while (!deadline.hasExpired()) {
        if (const std::optional<Outcome> outcome = lookUp(address))
            return *outcome;
        if (stop())
            return Outcome::Stopped;
        QThread::msleep(PauseMilliseconds);
    }
    return Outcome::NoAnswer;
}

MusicLibrary::Outcome RhythmboxLibrary::loadUri(const QString& address)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        Service, Path, QStringLiteral("org.gtk.Actions"), QStringLiteral("Activate"));
    message << QStringLiteral("load-uri")
            << QVariant(QVariantList{QVariant::fromValue(LoadUri{address, false})})
            << QVariantMap();
    return outcomeOf(_bus->call(message, QDBus::Block, SessionBus::TimeLimit));
}

std::optional<MusicLibrary::Outcome> RhythmboxLibrary::lookUp(const QString& address)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        Service, Path + QStringLiteral("/RhythmDB"),
        QStringLiteral("org.gnome.Rhythmbox3.RhythmDB"), QStringLiteral("GetEntryProperties"));
    message << address;
    const QDBusMessage answer = _bus->call(message, QDBus::Block, SessionBus::TimeLimit);
    if (isError(answer)) {
        // Any answer but silence says that the library does not list the file, so far.
        if (outcomeOf(answer) == Outcome::NoAnswer)
            return Outcome::NoAnswer;
        return std::nullopt;
    }
    const QVariantMap properties = qdbus_cast<QVariantMap>(answer.arguments().value(0));
    // What could not be read is listed without a title, among the import errors.
    return properties.value(QStringLiteral("title")).toString().isEmpty() ? Outcome::Refused
                                                                          : Outcome::Done;
}

std::optional<QStringList> RhythmboxLibrary::playlists()
{
    const QDBusMessage answer = callPlaylists(QStringLiteral("GetPlaylists"), {});
    if (isError(answer))
        return std::nullopt;
    return answer.arguments().value(0).toStringList();
}

MusicLibrary::Outcome RhythmboxLibrary::createPlaylist(const QString& name)
{
    return outcomeOf(callPlaylists(QStringLiteral("CreatePlaylist"), {name}));
}

MusicLibrary::Outcome RhythmboxLibrary::addToPlaylist(const QString& path, const QString& name)
{
    const QDBusMessage answer =
        callPlaylists(QStringLiteral("AddToPlaylist"), {name, addressOf(path)});
    const Outcome outcome = outcomeOf(answer);
    if (outcome != Outcome::Refused)
        return outcome;
    // Nothing lists smart playlists as such. They and unknown ones are refused with one and the
    // same error; so what is listed and refused is a smart one.
    const std::optional<QStringList> names = playlists();
    return names && names->contains(name) ? Outcome::SmartPlaylist : Outcome::Refused;
}

QDBusMessage RhythmboxLibrary::callPlaylists(const QString& method, const QVariantList& arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        Service, Path + QStringLiteral("/PlaylistManager"),
        QStringLiteral("org.gnome.Rhythmbox3.PlaylistManager"), method);
    message.setArguments(arguments);
    return _bus->call(message, QDBus::Block, SessionBus::TimeLimit);
}
