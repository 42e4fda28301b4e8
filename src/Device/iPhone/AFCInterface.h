#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

class AFCConnection;
class AFCList;
struct AFCRead;

/// The files of a phone on one open connection. Operations may come from any thread. Those that
/// write complete the interface; nothing else in the program calls them.
class AFCInterface
{
public:
    using Attributes = QHash<QString, QString>;

    explicit AFCInterface(std::shared_ptr<AFCConnection> connection);

    /// The connection, which lives on without this object.
    [[nodiscard]] AFCConnection& connection() const { return *_connection; }

    /// None when there is no such path.
    std::optional<Attributes> getAttributesAtPath(const QString& path);
    std::optional<Attributes> getDeviceAttributes();
    /// The keys and values that a phone gave in turn; a repeated key keeps its last value.
    static Attributes createDictionaryForAFCDictionary(AFCList& keysAndValues);
    /// The type among them: "S_IFREG", "S_IFDIR", "S_IFLNK"; null when there is none.
    static QString typeIn(const Attributes& attributes);
    /// The size among them, in bytes; 0 when there is none that makes sense.
    static double sizeIn(const Attributes& attributes);
    bool isFileAtPath(const QString& path);
    /// True for a symbolic link as well, whatever it points to.
    bool isDirectoryAtPath(const QString& path);
    /// All names in the phone's order, "." and ".." among them. Throws an Exception of empty
    /// name and reason when the folder cannot be opened.
    QStringList listFilesInPath(const QString& path);

    /// A handle, or 0. Mode 2 reads an existing file, 3 creates one.
    quint64 openFileAtPath(const QString& path, qint32 mode);
    bool closeFile(quint64 handle);
    /// The same without waiting for the phone.
    void closeFileLater(quint64 handle);
    /// Reads up to `size` bytes at `offset`; `size` becomes the count, 0 at the end. Null, and
    /// `size` as it was, when that failed.
    QByteArray readFromFile(quint64 handle, quint32& size, quint64 offset);
    /// The same in two steps: the first asks the phone and waits for nothing. The bytes come into
    /// the memory of `buffer`.
    std::shared_ptr<AFCRead> startReading(quint64 handle, quint32 size, quint64 offset,
                                          QByteArray buffer = {});
    /// The same for what comes after `before`, and as many bytes as that will have given; nothing
    /// is asked after a failure and at the end.
    std::shared_ptr<AFCRead> readOn(quint64 handle, const std::shared_ptr<AFCRead>& before,
                                    QByteArray buffer = {});
    /// None when nothing was asked.
    std::optional<QByteArray> finishReading(const std::shared_ptr<AFCRead>& read, quint32& size);
    /// A null array writes nothing, successfully.
    bool writeToFile(quint64 handle, const QByteArray& data, quint64 offset);
    bool setSizeOfFile(const QString& path, quint64 size);
    bool removePath(const QString& path);
    bool renamePath(const QString& from, const QString& to);
    bool createDirectory(const QString& path);

private:
    std::shared_ptr<AFCConnection> _connection;
};
