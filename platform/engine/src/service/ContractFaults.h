#pragma once

#include <exception>
#include <new>
#include <string>

#include "EngineException.h"

namespace EmbeddedHV {

/// Runs the call. Callers of the engine expect only Exception and JavaException. A standard
/// exception of the call becomes an Exception whose text begins with `what`.
template <class Call>
auto contracted(const char* what, Call call)
{
    try {
        return call();
    } catch (const std::bad_alloc&) {
        throw Exception(std::string(what) + ": there is not enough memory");
    } catch (const std::exception& error) {
        throw Exception(std::string(what) + ": " + error.what());
    }
}

} // namespace EmbeddedHV
