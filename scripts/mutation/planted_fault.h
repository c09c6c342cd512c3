// Included at the top of each source that contains planted faults. A build contains many faults,
// each behind a number. The environment variable selects the one that takes effect in a process.
#pragma once
#include <cstdlib>

// A planted fault may compile with warnings. That must not stop the build.
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Wnarrowing"
#pragma GCC diagnostic ignored "-Wparentheses"
#pragma GCC diagnostic ignored "-Wsign-compare"
#pragma GCC diagnostic ignored "-Wtype-limits"
#pragma GCC diagnostic ignored "-Wextra"
#pragma GCC diagnostic ignored "-Wunused-value"
#pragma GCC diagnostic ignored "-Wunused-variable"
#pragma GCC diagnostic ignored "-Wbool-operation"
#pragma GCC diagnostic ignored "-Wint-in-bool-context"

inline const int plantedFault = [] {
    const char* number = std::getenv("HV_PLANTED_FAULT");
    return number == nullptr ? 0 : std::atoi(number);
}();

// Not constexpr: in a constant expression the fault must not compile, or it would have no effect.
inline bool isPlanted(int number)
{
    return plantedFault == number;
}
