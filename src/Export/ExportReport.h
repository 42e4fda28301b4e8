#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <vector>

/// What became of one item of an export.
struct ExportItem {
    enum class Kind {
        Track,
        Photo,
        HandOver ///< no copy: an exported file that did not reach the music application
    };
    enum class Result {
        Copied,     ///< the destination holds as many bytes as the device reports
        Skipped,    ///< the destination existed, and the rule says to leave it
        Missing,    ///< the device has no such file
        Incomplete, ///< fewer or other bytes than the device reports
        Failed,     ///< could not be written
        Stopped     ///< the person stopped the export before the item was done
    };

    Kind kind = Kind::Track;
    QString title;
    QString from; ///< device path
    QString to;   ///< path on the computer; null when none was chosen
    qint64 bytes = 0;
    Result result = Result::Copied;
    QString why; ///< in words; null for an item that was copied as it should be

    /// The item neither was copied nor was meant to be left alone.
    [[nodiscard]] bool isFailure() const;
    /// The computer does not have the item now: it failed, or the export was stopped before.
    [[nodiscard]] bool isNotCopied() const { return isFailure() || result == Result::Stopped; }
    /// A line of its own beside that of the file, which was copied.
    [[nodiscard]] bool isHandOver() const { return kind == Kind::HandOver; }
    /// One JSON object without a line break, with the keys kind, title, from, to, bytes, result
    /// and why.
    [[nodiscard]] QByteArray toJson() const;
    /// "copied", "skipped", ...
    static QString resultName(Result result);
};

/// The account of an export, item by item, in order. It is written to the file "export.log" of
/// the log folder as it grows, so it is there even after a crash. One thread at a time.
class ExportReport
{
public:
    /// An empty report; the log of the export before stays until the first item.
    ExportReport();

    void add(ExportItem item);
    [[nodiscard]] const std::vector<ExportItem>& items() const { return _items; }
    /// The items that were to be copied; the lines of the hand-over are not among them.
    [[nodiscard]] std::size_t copyCount() const { return _items.size() - _handOverCount; }
    [[nodiscard]] std::size_t failureCount() const { return _failureCount; }
    [[nodiscard]] std::size_t notCopiedCount() const { return _notCopiedCount; }
    /// The lines about files that were copied, but did not reach the music application.
    [[nodiscard]] std::size_t handOverCount() const { return _handOverCount; }
    [[nodiscard]] QString logPath() const { return _log.fileName(); }
    /// Writes the lines of all items to `path`; empty, or the system's words why it failed.
    [[nodiscard]] QString writeTo(const QString& path) const;

private:
    std::vector<ExportItem> _items;
    std::size_t _failureCount = 0;
    std::size_t _notCopiedCount = 0;
    std::size_t _handOverCount = 0;
    QFile _log;
};
