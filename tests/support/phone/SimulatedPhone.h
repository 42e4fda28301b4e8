#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>

class PhoneStream;

/// What is wrong with a simulated phone.
struct PhoneFaults {
    /// Reads answered with an error.
    struct BadRange {
        QString file; ///< what the path ends in
        qint64 first = 0;
        qint64 end = 0;
        quint64 status = 4;
    };

    bool hasRecord = true;    ///< the computer keeps a record of the pairing
    bool knowsHost = true;    ///< the phone still knows the computer
    bool locked = false;      ///< by its pass code
    bool hangsAtDoor = false; ///< never answers when it is addressed
    bool garbageAtDoor = false;
    bool noServiceHandle = false;   ///< starts services at no port
    QString serviceError;           ///< why it starts no services
    bool refusesConnection = false; ///< to the services that it started

    quint64 longestRead = UINT64_MAX;
    std::optional<BadRange> badRange;
    QString unopenable;       ///< what the paths of files end in that cannot be opened
    int slowMilliseconds = 0; ///< before each answer
    qint64 cutAfterBytes =
        -1; ///< ends the file service's connection after so many bytes of answers
    qint64 stallAfterBytes = -1; ///< likewise stops sending, in the middle of an answer
    qint64 bytesAtATime = -1;    ///< what a slow link carries in a millisecond
    qint64 linkStallsAfter = -1; ///< bytes of an answer, be they encrypted
    qint64 garbageAfterOperations = -1;
    /// Changes a whole answer to an operation, head and all, before it is sent.
    std::function<void(quint64 operation, QByteArray& answer)> distort;
    qint64 hangAfterOperations = -1;
    bool foreverFull = false;                  ///< files never end
    QHash<QString, QByteArray> sizes;          ///< sizes to claim, by path
    QHash<QString, QByteArray> sizesOnceOpen;  ///< likewise, once the file was opened
    QHash<QString, quint64> statuses;          ///< what a path is refused with
    QHash<QString, QByteArray> types;          ///< likewise types
    QHash<QString, QByteArrayList> extraNames; ///< names to list besides, by folder
};

/// One phone: its identity, its files, what is wrong with it, and what was asked of it. Its
/// connections are served on threads of their own, and all may be called from any thread.
class SimulatedPhone
{
public:
    struct Identity {
        QString identifier;
        QString root; ///< the folder with its files
        QString name = QStringLiteral("Sample Phone");
        QString version = QStringLiteral("15.2");
        bool tls = true;
    };

    explicit SimulatedPhone(Identity identity);

    [[nodiscard]] const Identity& identity() const { return _identity; }

    /// What is wrong from now on.
    void setFaults(const PhoneFaults& faults);
    /// The same for part of it.
    void changeFaults(const std::function<void(PhoneFaults&)>& change);
    [[nodiscard]] PhoneFaults faults() const;
    /// Lets go whoever waits in a hanging phone, as pulling it out does.
    void release();

    /// Answers the phone's own service, and the service behind a port that it named.
    void serveLockdown(PhoneStream& stream);
    void serve(quint16 port, PhoneStream& stream);

    /// Operations of the file service so far: all, and those of one kind.
    [[nodiscard]] qint64 operations() const;
    [[nodiscard]] qint64 operations(quint64 code) const;
    /// What was asked so far that changes the phone or could, of any of its services.
    [[nodiscard]] qint64 writes() const;
    /// Whoever writes on purpose says so. What nobody said is told here once, in words, for all
    /// phones of this process.
    void expectWrites();
    static QStringList takeUnexpectedWrites();
    /// How often each file was opened, by its path.
    [[nodiscard]] QHash<QString, int> opens() const;
    /// The sizes that were asked for, one after another.
    [[nodiscard]] std::vector<quint64> readRequests() const;
    /// What was asked of the phone's own service, one after another.
    [[nodiscard]] QStringList requests() const;
    void forget();

    // For the services of the phone.
    void record(quint64 operation);
    void recordWrite(const QString& what);
    void recordOpen(const QString& path);
    void recordRead(quint64 size);
    void recordRequest(const QString& request);
    quint16 newPort();
    /// Waits until the phone is released or the connection cut.
    void hang(const PhoneStream& stream);
    /// How many of `bytes` answers the file service may still send before its connection ends.
    qint64 takeBytes(qint64 bytes);
    /// Likewise before it stalls.
    qint64 takeBytesBeforeStall(qint64 bytes);

private:
    const Identity _identity;
    mutable std::mutex _mutex;
    std::condition_variable _released;
    quint64 _releases = 0;
    PhoneFaults _faults;
    quint16 _nextPort = 50000;
    qint64 _operations = 0;
    qint64 _writes = 0;
    bool _expectsWrites = false;
    QHash<quint64, qint64> _byCode;
    QHash<QString, int> _opens;
    std::vector<quint64> _readRequests;
    QStringList _requests;
};
