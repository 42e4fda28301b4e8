#pragma once

#include "Base/Utf8.h"
#include "Device/Device.h"

/// Chooses the path that a database means whose text has a NUL in it: the text ends there, unless
/// only with what follows is there a file. The device is asked so many times and no more: a
/// database could name a million such paths.
class PathsWithNul
{
public:
    /// `path` makes a path of a text. Nobody is asked where there is no NUL.
    template <typename MakePath>
    [[nodiscard]] QString choose(Device& device, QByteArrayView text, MakePath path)
    {
        return Utf8::hasNul(text)
                   ? choose(device, path(Utf8::text(text)), path(Utf8::textAcrossNuls(text)))
                   : path(Utf8::text(text));
    }
    [[nodiscard]] QString choose(Device& device, const QString& ended, const QString& across)
    {
        const bool isAcross = ended != across && --_questionsLeft >= 0 &&
                              device.info(ended).failedAs(Failure::Kind::Missing) &&
                              device.fileExists(across);
        return isAcross ? across : ended;
    }

private:
    static constexpr int MostQuestions = 1000;

    int _questionsLeft = MostQuestions;
};
