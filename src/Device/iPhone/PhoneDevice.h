#pragma once

#include "Device/Device.h"

#include <atomic>
#include <vector>

class PhoneSession;

/// A phone or tablet, whose files are reached over its file service. Paths are rooted at "/".
class PhoneDevice final : public Device
{
public:
    /// Begins to follow phones; those plugged in already arrive like later ones, from the event
    /// loop. Gives the table of phones, still empty.
    static Devices init();
    /// Follows no more; the phones found stay known, and nobody waits for them any more.
    static void uninit();
    /// Whether each of these phones has been announced, or has failed, since `init`.
    static bool hasHeardOf(const std::vector<QString>& identifiers);
    /// Whether a phone that is plugged in is still being opened, so that it may yet be announced
    /// or fail.
    static bool isOpening();
    /// While `requested` is set, nobody waits for a phone: what would wait fails as stopped, within
    /// a moment. It outlives whoever waits.
    static void setInterrupt(const std::atomic<bool>& requested);

    explicit PhoneDevice(std::shared_ptr<PhoneSession> session);
    ~PhoneDevice() override;

    [[nodiscard]] PhoneSession& session() const { return *_session; }

    /// The phone's own identifier.
    [[nodiscard]] QString key() const override;
    Expected<FileInfo> info(const QString& path) override;
    /// Regular files; or folders and symbolic links.
    Expected<QStringList> list(const QString& folder, Entries entries) override;
    Expected<QByteArray> readFile(const QString& path) override;
    Expected<QByteArray> readPart(const QString& path, quint64 offset, quint64 length) override;
    [[nodiscard]] std::optional<Failure> whyGone() const override;
    /// Folders and symbolic links, whatever they point to.
    bool isDirectory(const QString& path) override;
    /// Copies files and whole folders.
    CopyResult copyOut(const QString& from, const QString& to,
                       std::optional<int> progress) override;
    CopyResult copyOutNew(const QString& from, const QString& to,
                          std::optional<int> progress) override;
    CameraRollDb* cameraRollDb() override;

private:
    std::shared_ptr<PhoneSession> _session;
};
