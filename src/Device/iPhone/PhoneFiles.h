#pragma once

#include "Base/Expected.h"
#include "Device/FileInfo.h"
#include "Platform/PhoneFileService.h"

#include <QCoreApplication>
#include <QStringList>

#include <memory>
#include <vector>

/// The files of a phone, as one connection gives them. Any thread.
///
/// Every failure says whether the phone knows no such thing, refused it, or is lost; a phone that
/// refuses one file goes on to give the others.
class PhoneFiles
{
    Q_DECLARE_TR_FUNCTIONS(PhoneFiles)

public:
    using GoOn = PhoneFileService::GoOn;

    explicit PhoneFiles(std::shared_ptr<PhoneFileService> service);

    [[nodiscard]] PhoneFileService& service() const { return *_service; }

    /// What stands at a path.
    Expected<FileInfo> info(const QString& path, const GoOn& goOn = {}) const;
    /// The same for a question that was asked before.
    Expected<FileInfo> infoFrom(const PhoneFileService::Asked& asked, const GoOn& goOn = {}) const;

    struct Entry {
        QString name;
        FileInfo info;

        /// True for a link as well, whatever it points to.
        [[nodiscard]] bool isFolder() const;
        [[nodiscard]] bool isFile() const;
    };
    /// What a folder holds, in the phone's order; never "." and "..", nor a name that is a path.
    /// Fails unless the phone tells of every entry that is still there.
    Expected<std::vector<Entry>> entries(const QString& folder, const GoOn& goOn = {}) const;

    /// The handle of a file, to be read.
    Expected<quint64> open(const QString& path, const GoOn& goOn = {}) const;

    /// A whole file: as many bytes as the phone reports, or none.
    Expected<QByteArray> read(const QString& path) const;
    /// At most `length` bytes from `offset`; fewer where the file ends.
    Expected<QByteArray> readPart(const QString& path, quint64 offset, quint64 length) const;

    /// Why an answer is not what was asked for: `words`, and which call failed how. A phone that
    /// is lost, or does not know the thing, is said in words of its own.
    [[nodiscard]] Failure failure(const PhoneAnswer& answer, const QString& words,
                                  const QString& call) const;

private:
    [[nodiscard]] Expected<QStringList> names(const QString& folder, const GoOn& goOn) const;
    [[nodiscard]] Expected<qint64> sizeOfFile(const QString& path) const;
    [[nodiscard]] Expected<QByteArray> readRange(const QString& path, qint64 first, qint64 end,
                                                 bool isWholeFile) const;

    std::shared_ptr<PhoneFileService> _service;
};
