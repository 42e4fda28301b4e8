#include "Window/Crash/RaisedException.h"

#include "Base/Exception.h"
#include "Window/Crash/Symbolicator.h"
#include "Window/Crash/ThrowSite.h"

#include <cxxabi.h>

#include <exception>
#include <typeinfo>

RaisedException RaisedException::current()
{
    const std::type_info* type = abi::__cxa_current_exception_type();
    RaisedException raised;
    if (!type) {
        raised.name = QStringLiteral("std::terminate");
        raised.reason = QStringLiteral("The program ended itself.");
        return raised;
    }
    raised.name = Symbolicator::demangled(type->name());
    raised.callStackReturnAddresses = ThrowSite::ofCurrentException();
    try {
        std::rethrow_exception(std::current_exception());
    } catch (const Exception& exception) {
        raised.name = exception.name();
        raised.reason = exception.reason();
        raised.callStackReturnAddresses = exception.returnAddresses();
    } catch (const std::exception& exception) {
        raised.reason = QString::fromUtf8(exception.what());
    } catch (...) { // NOLINT(bugprone-empty-catch): it has nothing to say
    }
    return raised;
}
