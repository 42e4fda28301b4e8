#pragma once

#include "Base/Exception.h"
#include "Base/Failure.h"
#include "Platform/PhoneFileService.h"

#include <QCoreApplication>

/// A step on the way to a phone's files that failed.
class PhoneFailure final : public Exception
{
    Q_DECLARE_TR_FUNCTIONS(PhoneFailure)

public:
    enum class Step { Connect, IsPaired, ValidatePairing, StartSession, StartService, Open, Use };

    /// `reason` is the exact text, `code` the number in it. May take a moment to find out more.
    PhoneFailure(Step step, int code, const QString& reason);

    /// What a person can do about it.
    [[nodiscard]] QString words() const;
    /// The same for any exception on the way to a phone.
    static QString wordsFor(const Exception& exception);

    /// Why nothing more comes from a phone whose connection was lost.
    static Failure lost(PhoneFileService::Loss loss);

private:
    static QString noAnswer();
    static QString noService();

    Step _step;
    int _code;
    bool _isServiceReachable;
};
