#include "Platform/AFCConnection.h"

#include "Platform/PatientThread.h"

#include <libimobiledevice/afc.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <unordered_map>

namespace
{
/// The library's own name for reading without creating.
constexpr qint64 ReadMode = 2;

/// Codes after which answers can no longer be told from each other.
bool endsConnection(int error)
{
    return error == AFC_E_MUX_ERROR || error == AFC_E_OP_HEADER_INVALID ||
           error == AFC_E_NOT_ENOUGH_DATA;
}

/// The system's calls end a path at its first zero and would name something else.
bool isPath(const QString& path)
{
    return !path.contains(QChar::Null);
}

QByteArrayList textsAndFree(char** texts)
{
    QByteArrayList copy;
    for (char** text = texts; text && *text; ++text)
        copy.append(QByteArray(*text));
    afc_dictionary_free(texts);
    return copy;
}
} // namespace

/// A read that was asked for; the thread's alone until it has ended.
struct AFCRead {
    PatientThread::Ticket ticket = 0;
    qint64 offset = 0;
    QByteArray buffer; ///< as large as what is asked for
    std::uint32_t count = 0;
    int error = AFCConnection::Lost;
};

/// Shared with calls that nobody waits for any more.
struct AFCConnection::State {
    explicit State(afc_client_private* newClient)
        : client(newClient)
    {
    }
    ~State() { afc_client_free(client); }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    void lose()
    {
        if (!lost.exchange(true) && lostHandler)
            lostHandler();
    }

    afc_client_private* const client;
    /// Where the phone stands in each open file, as far as that is known; for the connection's
    /// thread only. A request on the way costs as much as many bytes.
    std::unordered_map<quint64, qint64> positions;
    std::atomic<bool> lost = false;
    std::function<void()> lostHandler;
    std::atomic<std::chrono::milliseconds> patience = Patience;
};

std::shared_ptr<AFCConnection> AFCConnection::open(const MobileDevice::Handle& phone,
                                                   const MobileDevice::Service& service, int& error)
{
    afc_client_private* client = nullptr;
    error = afc_client_new(phone.device(), service.descriptor(), &client);
    return error == 0 ? std::make_shared<AFCConnection>(client) : nullptr;
}

AFCConnection::AFCConnection(afc_client_private* client)
    : _state(std::make_shared<State>(client))
    , _thread(std::make_unique<PatientThread>())
{
}

AFCConnection::~AFCConnection()
{
    // The client ends on its own thread, after whatever it is still doing.
    _thread->post([state = std::move(_state)] {});
}

void AFCConnection::setPatience(std::chrono::milliseconds patience)
{
    _state->patience = patience;
}

bool AFCConnection::isLost() const
{
    return _state->lost;
}

void AFCConnection::setLostHandler(std::function<void()> handler)
{
    _state->lostHandler = std::move(handler);
}

/// Runs `call(state.client, result)` on the connection's thread, which may outlive a wait that is
/// given up.
template <typename Call>
int AFCConnection::call(Call call)
{
    if (_state->lost)
        return Lost;
    const auto error = std::make_shared<int>(Lost);
    const bool inTime = _thread->run(
        [state = _state, error, call = std::move(call)] {
            if (!state->lost)
                *error = call(*state);
        },
        _state->patience);
    if (!inTime || endsConnection(*error)) {
        _state->lose();
        return Lost;
    }
    return *error;
}

int AFCConnection::fileInfoOpen(const QString& path, AFCList& keysAndValues)
{
    if (!isPath(path))
        return AFC_E_INVALID_ARG;
    const auto texts = std::make_shared<QByteArrayList>();
    const int error = call([path = path.toUtf8(), texts](State& state) {
        char** list = nullptr;
        const int result = afc_get_file_info(state.client, path.constData(), &list);
        *texts = textsAndFree(list);
        return result;
    });
    if (error == 0)
        keysAndValues = AFCList(std::move(*texts));
    return error;
}

int AFCConnection::deviceInfoOpen(AFCList& keysAndValues)
{
    const auto texts = std::make_shared<QByteArrayList>();
    const int error = call([texts](State& state) {
        char** list = nullptr;
        const int result = afc_get_device_info(state.client, &list);
        *texts = textsAndFree(list);
        return result;
    });
    if (error == 0)
        keysAndValues = AFCList(std::move(*texts));
    return error;
}

int AFCConnection::directoryOpen(const QString& path, AFCList& names)
{
    if (!isPath(path))
        return AFC_E_INVALID_ARG;
    const auto texts = std::make_shared<QByteArrayList>();
    const int error = call([path = path.toUtf8(), texts](State& state) {
        char** list = nullptr;
        const int result = afc_read_directory(state.client, path.constData(), &list);
        *texts = textsAndFree(list);
        return result;
    });
    if (error == 0)
        names = AFCList(std::move(*texts));
    return error;
}

int AFCConnection::directoryCreate(const QString& path)
{
    return call([path = path.toUtf8()](State& state) {
        return int(afc_make_directory(state.client, path.constData()));
    });
}

int AFCConnection::removePath(const QString& path)
{
    return call([path = path.toUtf8()](State& state) {
        return int(afc_remove_path(state.client, path.constData()));
    });
}

int AFCConnection::renamePath(const QString& from, const QString& to)
{
    return call([from = from.toUtf8(), to = to.toUtf8()](State& state) {
        return int(afc_rename_path(state.client, from.constData(), to.constData()));
    });
}

int AFCConnection::fileRefOpen(const QString& path, qint64 mode, quint64& handle)
{
    // The library can send no other mode than its own.
    const bool isMode =
        mode == ReadMode || (mode >= AFC_FOPEN_RDONLY && mode <= AFC_FOPEN_RDAPPEND);
    if (!isPath(path) || !isMode)
        return AFC_E_INVALID_ARG;
    // What the library calls 2 would create a file that is missing.
    const auto fileMode = mode == ReadMode ? AFC_FOPEN_RDONLY : afc_file_mode_t(mode);
    const auto opened = std::make_shared<std::uint64_t>(0);
    const int error = call([path = path.toUtf8(), fileMode, opened](State& state) {
        const int result = afc_file_open(state.client, path.constData(), fileMode, opened.get());
        state.positions.erase(*opened);
        return result;
    });
    if (error == 0)
        handle = *opened;
    return error;
}

int AFCConnection::fileRefClose(quint64 handle)
{
    return call([handle](State& state) {
        state.positions.erase(handle);
        return int(afc_file_close(state.client, handle));
    });
}

void AFCConnection::fileRefCloseLater(quint64 handle)
{
    _thread->post([state = _state, handle] {
        state->positions.erase(handle);
        if (!state->lost && endsConnection(afc_file_close(state->client, handle)))
            state->lose();
    });
}

int AFCConnection::seek(State& state, quint64 handle, qint64 offset)
{
    const auto known = state.positions.find(handle);
    if (known != state.positions.end() && known->second == offset)
        return 0;
    const int result = afc_file_seek(state.client, handle, offset, SEEK_SET);
    if (result == 0)
        state.positions[handle] = offset;
    else
        state.positions.erase(handle);
    return result;
}

int AFCConnection::fileRefSeek(quint64 handle, qint64 offset)
{
    return call([handle, offset](State& state) { return seek(state, handle, offset); });
}

int AFCConnection::readInPlace(State& state, quint64 handle, AFCRead& read)
{
    const int result = afc_file_read(state.client, handle, read.buffer.data(),
                                     std::uint32_t(read.buffer.size()), &read.count);
    // Whatever was announced, this is what there is room for.
    read.count = std::min(read.count, std::uint32_t(read.buffer.size()));
    const auto known = state.positions.find(handle);
    if (known != state.positions.end() && result == 0)
        known->second += read.count;
    else
        state.positions.erase(handle);
    return result;
}

void AFCConnection::perform(State& state, quint64 handle, AFCRead& read)
{
    if (state.lost)
        return;
    const int seekError = seek(state, handle, read.offset);
    const int error = seekError != 0 ? seekError : readInPlace(state, handle, read);
    if (endsConnection(error))
        state.lose();
    read.error = seekError != 0 ? NotInPlace : state.lost ? Lost : error;
}

std::shared_ptr<AFCRead> AFCConnection::fileRefReadLater(quint64 handle, qint64 offset,
                                                         quint32 size, QByteArray buffer)
{
    auto read = std::make_shared<AFCRead>();
    read->offset = offset;
    read->buffer = std::move(buffer);
    read->buffer.resize(qsizetype(size));
    read->ticket =
        _thread->post([state = _state, read, handle] { perform(*state, handle, *read); });
    return read;
}

std::shared_ptr<AFCRead> AFCConnection::fileRefReadOn(quint64 handle,
                                                      const std::shared_ptr<AFCRead>& before,
                                                      QByteArray buffer)
{
    auto read = std::make_shared<AFCRead>();
    read->buffer = std::move(buffer);
    read->ticket = _thread->post([state = _state, read, before, handle] {
        if (before->error != 0 || before->count == 0) {
            read->error = NotAsked;
            return;
        }
        read->offset = before->offset + before->count;
        read->buffer.resize(qsizetype(before->count));
        perform(*state, handle, *read);
    });
    return read;
}

int AFCConnection::fileRefFinishRead(const std::shared_ptr<AFCRead>& read, quint32& size,
                                     QByteArray& bytes)
{
    if (!_thread->wait(read->ticket, _state->patience)) {
        _state->lose();
        return Lost;
    }
    if (read->error != 0)
        return read->error;
    size = read->count;
    read->buffer.truncate(qsizetype(size));
    bytes = std::move(read->buffer);
    return 0;
}

int AFCConnection::fileRefWrite(quint64 handle, const QByteArray& bytes)
{
    return call([handle, bytes](State& state) {
        state.positions.erase(handle);
        std::uint32_t written = 0;
        return int(afc_file_write(state.client, handle, bytes.constData(),
                                  std::uint32_t(bytes.size()), &written));
    });
}

int AFCConnection::fileRefSetFileSize(quint64 handle, quint64 size)
{
    return call([handle, size](State& state) {
        return int(afc_file_truncate(state.client, handle, size));
    });
}
