#pragma once

#include "Platform/MobileDevice.h"

#include <QByteArray>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>

struct idevice_connection_private;
struct PhoneQuestion;

/// What came of a question to a phone's file service.
struct PhoneAnswer {
    enum class End {
        Answered, ///< by the phone, be it with a status that says no
        Lost,     ///< the connection is of no more use
        GivenUp   ///< whoever waited was asked to stop; the connection goes on
    };

    End end = End::Lost;
    quint64 status = 0; ///< the phone's, 0 for success
    quint64 handle = 0; ///< of a file that was opened
    QByteArray data;    ///< names, attributes or bytes

    [[nodiscard]] bool isGood() const { return end == End::Answered && status == 0; }
};

/// One connection to a phone's file service, which is only ever asked for what reads. Questions
/// are sent without waiting for the answers to those before, and any thread may ask.
///
/// What the phone sends is believed as far as it was asked for: an answer that is longer than it
/// can be, of the wrong number or kind, or none at all, loses the connection. So does a phone from
/// which not one byte comes for as long as the patience lasts; one that is merely slow may take
/// its time. On a lost connection every question fails at once.
class PhoneFileService
{
public:
    using Asked = std::shared_ptr<PhoneQuestion>;
    /// Asked now and then while the phone lets wait; false gives the wait up.
    using GoOn = std::function<bool()>;

    /// Why a connection was lost.
    enum class Loss {
        None,         ///< it was not
        Disconnected, ///< it ended
        Silent,       ///< the phone did not answer
        Nonsense      ///< what it answered makes no sense
    };

    static constexpr std::chrono::milliseconds Patience{10'000};
    /// The code of a connection that cannot be made.
    static constexpr int Unreachable = 30;

    /// Waits for the phone. Null, and a code in `error`, when the service cannot be reached.
    static std::shared_ptr<PhoneFileService> open(const MobileDevice::Handle& phone,
                                                  const MobileDevice::Service& service, int& error);
    /// While `*flag` is set, nobody waits for any phone: every wait is given up. The flag outlives
    /// the process's last wait; null for none.
    static void setInterrupt(const std::atomic<bool>* flag);

    PhoneFileService(idevice_connection_private* connection, bool isEncrypted);
    /// Ends the connection, and with it whatever was asked, without waiting.
    ~PhoneFileService();
    PhoneFileService(const PhoneFileService&) = delete;
    PhoneFileService& operator=(const PhoneFileService&) = delete;

    /// Set before others use the connection.
    void setPatience(std::chrono::milliseconds patience);
    /// Who hears, once and on any thread, that the connection was lost. Set it before others use
    /// the connection.
    void setLostHandler(std::function<void()> handler);
    /// Any thread.
    [[nodiscard]] Loss loss() const;
    /// From now on nobody waits for this connection; for a phone that nobody needs any more.
    void giveUp();

    // The questions. Each waits for nothing.
    Asked askForInfo(const QString& path);
    Asked askForNames(const QString& folder);
    Asked askToOpen(const QString& path);
    Asked askToSeek(quint64 handle, qint64 offset);
    /// Up to `size` bytes on from where the file stands; they come into the memory of `buffer`.
    Asked askToRead(quint64 handle, quint32 size, QByteArray buffer = {});
    /// Nobody need wait for it.
    Asked askToClose(quint64 handle);

    /// Waits for an answer. Once for each question.
    PhoneAnswer wait(const Asked& asked, const GoOn& goOn = {});

private:
    class Wire;

    Asked post(std::shared_ptr<PhoneQuestion> question);

    std::shared_ptr<Wire> _wire;
};
