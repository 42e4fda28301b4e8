#pragma once

#include "Base/Expected.h"

#include <QCoreApplication>
#include <QString>

class Device;

/// Whether a copy holds what the device reports, for a file or for a whole folder.
class CopiedSize
{
    Q_DECLARE_TR_FUNCTIONS(CopiedSize)

public:
    /// Asks the device before the copy begins.
    CopiedSize(Device& device, const QString& from);

    /// Empty when the copy `to` holds as many bytes as the device reported before and reports
    /// now, in each file of a folder; else what is wrong, in words, which it also is when the
    /// device cannot be asked. Both are asked for: a file that ends early while it is copied may
    /// well say afterwards that it was never longer.
    [[nodiscard]] QString difference(const QString& to) const;

    /// The bytes of a file, or of all files below a folder, on the computer.
    static qint64 onComputer(const QString& path);

private:
    static Expected<qint64> reported(Device& device, const QString& from);
    static QString compared(qint64 copied, const Expected<qint64>& reported);
    static QString differenceNow(Device& device, const QString& from, const QString& to);

    Device& _device;
    QString _from;
    Expected<qint64> _reportedBefore;
};
