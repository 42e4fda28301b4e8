#include "Platform/PhoneFileService.h"

#include "Platform/PatientThread.h"
#include "Platform/PhonePacket.h"

#include <libimobiledevice/libimobiledevice.h>
#include <libimobiledevice/lockdown.h>
#include <sys/socket.h>

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <utility>

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using PhonePacket::Operation;

namespace
{
/// Questions on the way at a time. All of them fit into the connection's buffers, so that sending
/// never waits for the phone.
constexpr std::size_t MostOnTheWay = 32;
/// Longer paths name nothing on a phone.
constexpr qsizetype LongestPath = 2048;
/// What lists and attributes are believed to need at the most.
constexpr quint64 MostNames = 64 << 20;
constexpr quint64 MostAttributes = 64 << 10;
/// Memory for an answer grows by this as it comes, whatever its head claims.
constexpr quint64 Growth = 1 << 20;
/// Over an encrypted connection the library gives nothing until it has all of what it was asked
/// for. Small pieces let see that bytes come, on the slowest link.
constexpr quint64 EncryptedPiece = 4 << 10;
/// How often someone who waits looks whether to go on, and asks others whether to.
constexpr auto Look = 100ms;
constexpr auto Question = 500ms;
/// The connection's own thread finds out first that a phone is silent; bytes within an encrypted
/// piece only it can see. This is for a library that does not come back.
constexpr auto Grace = 2s;
constexpr auto EncryptedGrace = 20s;

std::atomic<const std::atomic<bool>*> theInterrupt = nullptr;

bool isInterrupted()
{
    const std::atomic<bool>* const flag = theInterrupt;
    return flag && *flag;
}

/// A phone's calls end a path at its first zero and would name something else.
bool isPath(const QString& path)
{
    return !path.contains(QChar::Null) && path.size() <= LongestPath;
}
} // namespace

/// A question; the connection's thread's alone from when it is posted until it is done.
struct PhoneQuestion {
    Operation operation = Operation::Status;
    QByteArray body;
    Operation expected = Operation::Status; ///< besides a status
    quint64 mostData = 0;
    quint64 number = 0;
    bool isDone = false;
    bool isAnswered = false; ///< else nobody may look at the answer, which may still be coming
    PhoneAnswer answer;

    static std::shared_ptr<PhoneQuestion> make(Operation operation, QByteArray body,
                                               Operation expected, quint64 mostData)
    {
        auto question = std::make_shared<PhoneQuestion>();
        question->operation = operation;
        question->body = std::move(body);
        question->expected = expected;
        question->mostData = mostData;
        return question;
    }
    static std::shared_ptr<PhoneQuestion> answered(quint64 status)
    {
        auto question = std::make_shared<PhoneQuestion>();
        question->isDone = true;
        question->isAnswered = true;
        question->answer.end = PhoneAnswer::End::Answered;
        question->answer.status = status;
        return question;
    }
};

/// The connection and the thread that has it for itself: the library's connections are for one
/// thread at a time. Whoever else wants the thread to end shuts the socket.
class PhoneFileService::Wire
{
public:
    Wire(idevice_connection_private* connection, bool isEncrypted)
        : _connection(connection)
        , _isEncrypted(isEncrypted)
    {
        if (idevice_connection_get_fd(connection, &_socket) != IDEVICE_E_SUCCESS)
            _socket = -1;
    }

    void run();
    void post(const std::shared_ptr<PhoneQuestion>& question);
    PhoneAnswer wait(const std::shared_ptr<PhoneQuestion>& question, const GoOn& goOn);
    void lose(Loss why);
    /// Nobody hears of it.
    void end();

    std::atomic<std::chrono::milliseconds> patience = Patience;
    std::atomic<Loss> loss = Loss::None;
    std::atomic<bool> isGivenUp = false;
    std::function<void()> lostHandler;

private:
    bool waitForQuestions();
    bool send();
    QByteArray takeQuestions();
    bool receiveAnswer();
    bool receiveBody(QByteArray& body, quint64 size);
    bool receive(char* bytes, quint64 size);
    void finish(const std::shared_ptr<PhoneQuestion>& question);
    void endAll();
    void shut();
    void noteProgress() { _progress = Clock::now().time_since_epoch(); }
    [[nodiscard]] bool isSilent() const
    {
        return Clock::now().time_since_epoch() - _progress.load() >
               patience.load() + (_isEncrypted ? EncryptedGrace : Grace);
    }

    idevice_connection_private* const _connection;
    const bool _isEncrypted;
    quint64 _lastNumber = 0;
    std::atomic<Clock::duration> _progress = Clock::now().time_since_epoch(); ///< the last byte

    std::mutex _mutex; ///< for what follows
    std::condition_variable _hasQuestions;
    std::condition_variable _changed;
    int _socket = -1;
    bool _isEnding = false;
    std::deque<std::shared_ptr<PhoneQuestion>> _posted;
    std::deque<std::shared_ptr<PhoneQuestion>> _onTheWay;
};

void PhoneFileService::Wire::run()
{
    while (waitForQuestions() && send() && receiveAnswer()) {
    }
    endAll();
    idevice_disconnect(_connection);
}

bool PhoneFileService::Wire::waitForQuestions()
{
    std::unique_lock lock(_mutex);
    _hasQuestions.wait(lock,
                       [this] { return _isEnding || !_posted.empty() || !_onTheWay.empty(); });
    return !_isEnding;
}

QByteArray PhoneFileService::Wire::takeQuestions()
{
    QByteArray bytes;
    const std::lock_guard lock(_mutex);
    if (_onTheWay.empty())
        noteProgress(); // the phone had nothing to answer
    while (!_posted.empty() && _onTheWay.size() < MostOnTheWay) {
        const std::shared_ptr<PhoneQuestion> question = std::move(_posted.front());
        _posted.pop_front();
        question->number = ++_lastNumber;
        bytes += PhonePacket::question(question->number, question->operation, question->body);
        _onTheWay.push_back(question);
    }
    return bytes;
}

bool PhoneFileService::Wire::send()
{
    const QByteArray bytes = takeQuestions();
    for (qsizetype sent = 0; sent < bytes.size();) {
        std::uint32_t count = 0;
        const auto error = idevice_connection_send(_connection, bytes.constData() + sent,
                                                   std::uint32_t(bytes.size() - sent), &count);
        if (error != IDEVICE_E_SUCCESS || count == 0 || count > bytes.size() - sent) {
            lose(Loss::Disconnected);
            return false;
        }
        sent += count;
    }
    return true;
}

bool PhoneFileService::Wire::receiveAnswer()
{
    QByteArray bytes(PhonePacket::HeaderSize, Qt::Uninitialized);
    if (!receive(bytes.data(), quint64(bytes.size())))
        return false;
    std::shared_ptr<PhoneQuestion> question;
    {
        const std::lock_guard lock(_mutex);
        if (_onTheWay.empty()) // everything was ended meanwhile
            return false;
        question = _onTheWay.front();
    }
    const auto head = PhonePacket::readHead(bytes);
    const bool makesSense =
        head && head->number == question->number &&
        (head->operation == Operation::Status || head->operation == question->expected) &&
        (head->operation != Operation::Data || head->bodySize <= question->mostData);
    if (!makesSense) {
        lose(Loss::Nonsense);
        return false;
    }
    PhoneAnswer& answer = question->answer;
    QByteArray number;
    const bool isData = head->operation == Operation::Data;
    if (!receiveBody(isData ? answer.data : number, head->bodySize))
        return false;
    if (head->operation == Operation::Status)
        answer.status = PhonePacket::numberIn(number);
    else if (head->operation == Operation::FileOpened)
        answer.handle = PhonePacket::numberIn(number);
    if (!isData)
        answer.data.resize(0);
    answer.end = PhoneAnswer::End::Answered;
    finish(question);
    return true;
}

bool PhoneFileService::Wire::receiveBody(QByteArray& body, quint64 size)
{
    body.resize(0);
    while (quint64(body.size()) < size) {
        const auto before = body.size();
        const quint64 piece = std::min(Growth, size - quint64(before));
        body.resize(before + qsizetype(piece));
        if (!receive(body.data() + before, piece))
            return false;
    }
    return true;
}

/// Asks the library for no more than there is room for, and takes from it no more than it was
/// asked for.
bool PhoneFileService::Wire::receive(char* bytes, quint64 size)
{
    while (size > 0) {
        const auto piece = std::uint32_t(_isEncrypted ? std::min(size, EncryptedPiece) : size);
        std::uint32_t count = 0;
        const auto error = idevice_connection_receive_timeout(_connection, bytes, piece, &count,
                                                              unsigned(patience.load().count()));
        if (count == 0 || count > piece) {
            lose(error == IDEVICE_E_TIMEOUT ? Loss::Silent : Loss::Disconnected);
            return false;
        }
        noteProgress();
        bytes += count;
        size -= count;
    }
    return true;
}

void PhoneFileService::Wire::post(const std::shared_ptr<PhoneQuestion>& question)
{
    const std::lock_guard lock(_mutex);
    if (_isEnding) {
        question->isDone = true;
        return;
    }
    _posted.push_back(question);
    _hasQuestions.notify_one();
}

void PhoneFileService::Wire::finish(const std::shared_ptr<PhoneQuestion>& question)
{
    const std::lock_guard lock(_mutex);
    if (_onTheWay.empty())
        return;
    _onTheWay.pop_front();
    question->isAnswered = true;
    question->isDone = true;
    _changed.notify_all();
}

PhoneAnswer PhoneFileService::Wire::wait(const std::shared_ptr<PhoneQuestion>& question,
                                         const GoOn& goOn)
{
    const PhoneAnswer givenUp = {PhoneAnswer::End::GivenUp, 0, 0, {}};
    auto nextQuestion = Clock::now() + Question;
    if (isInterrupted() || isGivenUp) // a phone that answers fast could be read for ever
        return givenUp;
    std::unique_lock lock(_mutex);
    while (!_changed.wait_for(lock, Look, [&] { return question->isDone; })) {
        if (isInterrupted() || isGivenUp)
            return givenUp;
        lock.unlock();
        if (isSilent()) // and the library does not come back
            lose(Loss::Silent);
        if (goOn && Clock::now() >= nextQuestion) {
            if (!goOn())
                return givenUp;
            nextQuestion = Clock::now() + Question;
        }
        lock.lock();
    }
    return question->isAnswered ? std::move(question->answer) : PhoneAnswer();
}

void PhoneFileService::Wire::lose(Loss why)
{
    {
        const std::lock_guard lock(_mutex);
        if (_isEnding)
            return;
        _isEnding = true;
        loss = why;
    }
    // Before those who wait go on: whoever has heard of the loss may count on that it was told.
    if (lostHandler)
        lostHandler();
    endAll();
}

void PhoneFileService::Wire::end()
{
    {
        const std::lock_guard lock(_mutex);
        _isEnding = true;
    }
    endAll();
}

void PhoneFileService::Wire::endAll()
{
    const std::lock_guard lock(_mutex);
    if (_socket >= 0) // wakes the connection's thread, wherever the library waits
        shutdown(std::exchange(_socket, -1), SHUT_RDWR);
    for (auto* questions : {&_onTheWay, &_posted}) {
        for (const std::shared_ptr<PhoneQuestion>& question : *questions)
            question->isDone = true;
        questions->clear();
    }
    _hasQuestions.notify_all();
    _changed.notify_all();
}

std::shared_ptr<PhoneFileService> PhoneFileService::open(const MobileDevice::Handle& phone,
                                                         const MobileDevice::Service& service,
                                                         int& error)
{
    const lockdownd_service_descriptor& descriptor = *service.descriptor();
    const bool isEncrypted = descriptor.ssl_enabled != 0;
    idevice_connection_t connection = nullptr;
    error = Unreachable;
    if (idevice_connect(phone.device(), descriptor.port, &connection) != IDEVICE_E_SUCCESS)
        return nullptr;
    if (isEncrypted && idevice_connection_enable_ssl(connection) != IDEVICE_E_SUCCESS) {
        idevice_disconnect(connection);
        return nullptr;
    }
    error = 0;
    return std::make_shared<PhoneFileService>(connection, isEncrypted);
}

void PhoneFileService::setInterrupt(const std::atomic<bool>* flag)
{
    theInterrupt = flag;
}

PhoneFileService::PhoneFileService(idevice_connection_private* connection, bool isEncrypted)
    : _wire(std::make_shared<Wire>(connection, isEncrypted))
{
    PatientThread::alone([wire = _wire] { wire->run(); });
}

PhoneFileService::~PhoneFileService()
{
    _wire->end();
}

void PhoneFileService::setPatience(std::chrono::milliseconds patience)
{
    _wire->patience = patience;
}

void PhoneFileService::setLostHandler(std::function<void()> handler)
{
    _wire->lostHandler = std::move(handler);
}

PhoneFileService::Loss PhoneFileService::loss() const
{
    return _wire->loss;
}

void PhoneFileService::giveUp()
{
    _wire->isGivenUp = true;
}

PhoneFileService::Asked PhoneFileService::post(std::shared_ptr<PhoneQuestion> question)
{
    _wire->post(question);
    return question;
}

PhoneFileService::Asked PhoneFileService::askForInfo(const QString& path)
{
    if (!isPath(path))
        return PhoneQuestion::answered(PhonePacket::NotFound);
    return post(PhoneQuestion::make(Operation::FileInfo, PhonePacket::bodyForPath(path),
                                    Operation::Data, MostAttributes));
}

PhoneFileService::Asked PhoneFileService::askForNames(const QString& folder)
{
    if (!isPath(folder))
        return PhoneQuestion::answered(PhonePacket::NotFound);
    return post(PhoneQuestion::make(Operation::ListFolder, PhonePacket::bodyForPath(folder),
                                    Operation::Data, MostNames));
}

PhoneFileService::Asked PhoneFileService::askToOpen(const QString& path)
{
    if (!isPath(path))
        return PhoneQuestion::answered(PhonePacket::BadArgument);
    return post(PhoneQuestion::make(Operation::OpenFile, PhonePacket::bodyToOpen(path),
                                    Operation::FileOpened, 0));
}

PhoneFileService::Asked PhoneFileService::askToSeek(quint64 handle, qint64 offset)
{
    return post(PhoneQuestion::make(Operation::SeekFile, PhonePacket::bodyToSeek(handle, offset),
                                    Operation::Status, 0));
}

PhoneFileService::Asked PhoneFileService::askToRead(quint64 handle, quint32 size, QByteArray buffer)
{
    auto question = PhoneQuestion::make(Operation::ReadFile, PhonePacket::bodyToRead(handle, size),
                                        Operation::Data, size);
    question->answer.data = std::move(buffer);
    return post(std::move(question));
}

PhoneFileService::Asked PhoneFileService::askToClose(quint64 handle)
{
    return post(PhoneQuestion::make(Operation::CloseFile, PhonePacket::bodyToClose(handle),
                                    Operation::Status, 0));
}

PhoneAnswer PhoneFileService::wait(const Asked& asked, const GoOn& goOn)
{
    return _wire->wait(asked, goOn);
}
