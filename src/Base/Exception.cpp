#include "Base/Exception.h"

#include <execinfo.h>

#include <algorithm>
#include <array>

Exception::Exception(QString name, QString reason)
    : _name(std::move(name))
    , _reason(std::move(reason))
    , _what((_name + QStringLiteral(": ") + _reason).toStdString())
{
    constexpr int MostFrames = 64;
    std::array<void*, MostFrames> frames{};
    const int count = backtrace(frames.data(), MostFrames);
    // From whoever made it on. Looked for and not counted: a checking tool may put frames of its
    // own before this one.
    const auto end = frames.begin() + count;
    const auto maker = std::find(frames.begin(), end, __builtin_return_address(0));
    _returnAddresses.assign(maker == end ? frames.begin() : maker, end);
}
