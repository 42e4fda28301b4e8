#pragma once

#include "Platform/MobileDevice.h"

#include <QByteArray>
#include <QByteArrayList>

#include <chrono>
#include <functional>
#include <memory>

struct AFCRead;
struct afc_client_private;
class PatientThread;

/// A list of texts that a phone gave, read one after another: the entries of a folder, or keys
/// and values in turn.
class AFCList
{
public:
    AFCList() = default;
    explicit AFCList(QByteArrayList texts)
        : _texts(std::move(texts))
    {
    }

    /// The next text; null at the end.
    QByteArray next() { return _next < _texts.size() ? _texts[_next++] : QByteArray(); }

private:
    QByteArrayList _texts;
    qsizetype _next = 0;
};

/// The calls of a phone's file service on one connection. Each gives 0, or the error code of the
/// phone or the library. They may come from any thread and run one after another.
///
/// No call waits longer than the patience: a phone that does not answer in that time is given
/// up. Then, and after any error that leaves the connection useless, every further call fails at
/// once.
class AFCConnection
{
public:
    /// What calls give on a connection that is lost or given up.
    static constexpr int Lost = 30;
    /// What a read gives that did not come to the place where it should begin.
    static constexpr int NotInPlace = -1;
    /// What a read gives that was to follow one after which there is no going on.
    static constexpr int NotAsked = -2;
    static constexpr std::chrono::milliseconds Patience{10'000};

    /// Null, and the error code in `error`, when the service cannot be reached.
    static std::shared_ptr<AFCConnection> open(const MobileDevice::Handle& phone,
                                               const MobileDevice::Service& service, int& error);
    explicit AFCConnection(afc_client_private* client);
    ~AFCConnection();
    AFCConnection(const AFCConnection&) = delete;
    AFCConnection& operator=(const AFCConnection&) = delete;

    /// For everybody who shares the connection.
    void setPatience(std::chrono::milliseconds patience);
    /// Whether the connection is of no more use.
    [[nodiscard]] bool isLost() const;
    /// Who hears, once and on any thread, that the connection has become of no use. Set it
    /// before others use the connection.
    void setLostHandler(std::function<void()> handler);

    int fileInfoOpen(const QString& path, AFCList& keysAndValues);
    int deviceInfoOpen(AFCList& keysAndValues);
    int directoryOpen(const QString& path, AFCList& names);
    int directoryCreate(const QString& path);
    int removePath(const QString& path);
    int renamePath(const QString& from, const QString& to);

    /// Mode 2 reads and 3 writes.
    int fileRefOpen(const QString& path, qint64 mode, quint64& handle);
    int fileRefClose(quint64 handle);
    /// The same without waiting for the answer.
    void fileRefCloseLater(quint64 handle);
    int fileRefSeek(quint64 handle, qint64 offset);
    /// Asks for up to `size` bytes at `offset` and does not wait for them. They come into the
    /// memory of `buffer`.
    std::shared_ptr<AFCRead> fileRefReadLater(quint64 handle, qint64 offset, quint32 size,
                                              QByteArray buffer = {});
    /// The same for what comes after `before`, and as many bytes as that will have given. Nothing
    /// is asked if it fails or finds the end.
    std::shared_ptr<AFCRead> fileRefReadOn(quint64 handle, const std::shared_ptr<AFCRead>& before,
                                           QByteArray buffer = {});
    /// Waits for the bytes; `size` becomes their count, unless it failed.
    int fileRefFinishRead(const std::shared_ptr<AFCRead>& read, quint32& size, QByteArray& bytes);
    int fileRefWrite(quint64 handle, const QByteArray& bytes);
    int fileRefSetFileSize(quint64 handle, quint64 size);

private:
    struct State;

    template <typename Call>
    int call(Call call);
    static int seek(State& state, quint64 handle, qint64 offset);
    static int readInPlace(State& state, quint64 handle, AFCRead& read);
    static void perform(State& state, quint64 handle, AFCRead& read);

    std::shared_ptr<State> _state;
    std::unique_ptr<PatientThread> _thread;
};
