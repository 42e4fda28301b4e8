#pragma once

#include "Base/Expected.h"
#include "Device/CopyResult.h"
#include "Device/FileInfo.h"
#include "Device/Problem.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <map>
#include <memory>
#include <optional>
#include <vector>

class BookDb;
class CameraRollDb;
class DeviceDelegate;
class PhotoDb;
class TrackDb;
class VoiceMemoDb;

/// One connected player or phone: the only way to its files, and the owner of its readers.
/// The class side is the hub that starts the device families and knows who hears of them.
///
/// Paths are absolute in the device's own path space, built from `prefix`, `controlPath` or
/// `bookPath`. Nothing is ever written to a device. This base class is a device that holds
/// nothing; each family overrides the file operations.
class Device
{
public:
    /// Device key to device.
    using Devices = std::map<QString, std::shared_ptr<Device>>;

    /// Who hears of devices and copies; set it before `init`, so that no event is lost. It must
    /// outlive its time as delegate.
    static void setDelegate(DeviceDelegate* delegate);
    static DeviceDelegate* delegate();
    /// Starts the device families and gives the devices already present. Needs a running event
    /// loop afterwards for word of those that come and go.
    static Devices init();
    /// Stops the families. The delegate stays.
    static void uninit();
    /// Adds a family's devices; one whose key is there already replaces the earlier device.
    static void addFamily(Devices& devices, const Devices& family);

    Device();
    virtual ~Device();
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;

    /// Root of the device's files: a mount point, or "/" of a phone.
    [[nodiscard]] const QString& prefix() const { return _prefix; }
    /// The folder "iPod_Control" or "iTunes_Control".
    [[nodiscard]] const QString& controlPath() const { return _controlPath; }
    /// The folder of books; null where the family has none.
    [[nodiscard]] const QString& bookPath() const { return _bookPath; }
    /// What people call the device: the name that its library gives; null if none does.
    QString description();
    /// What identifies the device for as long as it is connected.
    [[nodiscard]] virtual QString key() const;
    /// Where the device's files stand in the computer's own file system; null when they do not.
    [[nodiscard]] virtual QString localRoot() const;

    /// What stands at a path. "Missing" when nothing does; any other failure means that nobody
    /// can tell.
    virtual Expected<FileInfo> info(const QString& path);
    enum class Entries {
        Files,  ///< all that is no folder
        Folders ///< without "." and ".."
    };
    /// Bare names of the entries of a folder, in the device's order. A folder that could not be
    /// read to its end has failed.
    virtual Expected<QStringList> list(const QString& folder, Entries entries);
    /// The whole file.
    virtual Expected<QByteArray> readFile(const QString& path);
    /// At most `length` bytes from `offset`; fewer at the end of the file.
    virtual Expected<QByteArray> readPart(const QString& path, quint64 offset, quint64 length);
    /// Why nothing more comes from the device: it was disconnected, or does not answer. None while
    /// it can be asked. Any thread, and nothing is asked for it.
    [[nodiscard]] virtual std::optional<Failure> whyGone() const;

    // The same without a reason, for callers to whom every "no" is one.
    bool fileExists(const QString& path);
    virtual bool isFile(const QString& path);
    virtual bool isDirectory(const QString& path);
    QStringList getFiles(const QString& folder);
    QStringList getDirs(const QString& folder);
    /// Null when it cannot be read.
    QByteArray read(const QString& path);
    QByteArray read(const QString& path, quint64 offset, quint64 length);
    /// Bytes; none when there is no such file, or nothing to ask.
    std::optional<qint64> getFileSize(const QString& path);

    /// Copies `from` on the device to `to` on the computer, in chunks of 1 MiB. After each chunk
    /// is read and before it is written, the delegate hears the fraction copied plus `progress`
    /// (the item's index in the job; none counts as 0) and may stop the copy. A file or a link
    /// that has the name `to` is replaced, but not before the source is open.
    virtual CopyResult copyOut(const QString& from, const QString& to, std::optional<int> progress);
    /// The same where nothing is to be replaced: "Taken" when something has that name.
    virtual CopyResult copyOutNew(const QString& from, const QString& to,
                                  std::optional<int> progress);
    /// Copies an SQLite database with those of its "-shm" and "-wal" files that exist. Answers
    /// true in every case; a copy that failed shows when it is opened.
    bool copyOutSqlite(const QString& from, const QString& to, std::optional<int> progress);

    /// The readers, made on first use; null while the device has no such database, and then
    /// looked for again at the next call. On the thread of the window only.
    TrackDb* trackDb();
    virtual PhotoDb* photoDb();
    virtual VoiceMemoDb* voiceMemoDb();
    virtual BookDb* bookDb();
    /// Only phones have a camera roll.
    virtual CameraRollDb* cameraRollDb();

    /// What the readers could not read, reader by reader. Loads none: only those that were asked
    /// for something before have problems.
    [[nodiscard]] std::vector<ReaderProblem> problems() const;

    /// Asks the threads that make previews to end, without waiting: for a device that is leaving
    /// while somebody still holds it.
    void stopPreviews();
    /// The same, and waits. A family does it for its devices in `uninit`.
    void endPreviews();

protected:
    /// Ends the readers with their threads. A family calls it first thing in its destructor:
    /// afterwards its file operations, which those threads use, are gone.
    void releaseReaders();
    /// For the families that have a camera roll: made on first use.
    CameraRollDb* createdCameraRollDb();

    QString _prefix;
    QString _controlPath;
    QString _bookPath;

private:
    std::unique_ptr<TrackDb> _trackDb;
    std::optional<ProblemList> _problemsWithoutTrackDb; ///< once it was looked for in vain
    std::unique_ptr<PhotoDb> _photoDb;
    std::unique_ptr<VoiceMemoDb> _voiceMemoDb;
    std::unique_ptr<BookDb> _bookDb;
    std::unique_ptr<CameraRollDb> _cameraRollDb;
};
