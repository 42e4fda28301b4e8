#include "Window/Crash/Symbolicator.h"

#include <backtrace.h>
#include <cxxabi.h>

#include <cstdint>
#include <cstdlib>
#include <memory>

namespace
{
void ignoreError(void* /*data*/, const char* /*message*/, int /*number*/) {}

backtrace_state* state()
{
    // One for all time: the library has no way to free it.
    static backtrace_state* const instance =
        backtrace_create_state(nullptr, 1, ignoreError, nullptr);
    return instance;
}

void takeSymbol(void* data, std::uintptr_t /*address*/, const char* symbol,
                std::uintptr_t /*value*/, std::uintptr_t /*size*/)
{
    if (symbol)
        *static_cast<QString*>(data) = Symbolicator::demangled(symbol);
}

/// Called for each function that was merged into the one before; the last is the real one.
int takeFunction(void* data, std::uintptr_t /*address*/, const char* /*file*/, int /*line*/,
                 const char* function)
{
    if (function)
        *static_cast<QString*>(data) = Symbolicator::demangled(function);
    return 0;
}
} // namespace

QString Symbolicator::symbolForAddress(const void* returnAddress)
{
    QString name;
    const auto address = reinterpret_cast<std::uintptr_t>(returnAddress);
    if (address == 0 || !state())
        return name;
    // The call is before its return address, and may be the last thing of its function.
    backtrace_syminfo(state(), address - 1, takeSymbol, ignoreError, &name);
    if (name.isEmpty())
        backtrace_pcinfo(state(), address - 1, takeFunction, ignoreError, &name);
    return name;
}

QString Symbolicator::demangled(const char* name)
{
    int status = 0;
    const std::unique_ptr<char, void (*)(void*)> text(
        abi::__cxa_demangle(name, nullptr, nullptr, &status), std::free);
    return QString::fromUtf8(status == 0 && text ? text.get() : name);
}
