#include "Base/Exception.h"

#include <execinfo.h>

#include <array>

Exception::Exception(QString name, QString reason)
    : _name(std::move(name))
    , _reason(std::move(reason))
    , _what((_name + QStringLiteral(": ") + _reason).toStdString())
{
    constexpr int MostFrames = 64;
    std::array<void*, MostFrames> frames{};
    const int count = backtrace(frames.data(), MostFrames);
    // Frame 0 is this constructor, which nobody looks for.
    if (count > 1)
        _returnAddresses.assign(frames.begin() + 1, frames.begin() + count);
}
