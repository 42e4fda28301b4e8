#pragma once

#include "Base/Exception.h"

/// A step on the way to a phone's files that failed.
class AFCFailure final : public Exception
{
public:
    enum class Step { Connect, IsPaired, ValidatePairing, StartSession, StartService, Open, Use };

    /// `reason` is the exact text, `code` the number in it. May take a moment to find out more.
    AFCFailure(Step step, int code, const QString& reason);

    /// What a person can do about it.
    [[nodiscard]] QString words() const;
    /// The same for any exception on the way to a phone.
    static QString wordsFor(const Exception& exception);

private:
    Step _step;
    int _code;
    bool _isServiceReachable;
};
