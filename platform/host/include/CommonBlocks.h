#pragma once

#include <atomic>
#include <cstdint>

#include "HostExport.h"

/// The global block, for the procedure's thread alone. A setting above 0 is in force; it is the
/// 1-based column of the variable.
struct CmnGlb
{
    std::int64_t weight = 0;
    std::int64_t split = 0;
};

/// The system block. Writing -1 to the run indicator tells the host to end the run; who cancels a
/// job does that on a thread of its own, so it is an atomic 64-bit number.
struct CmnSys
{
    std::atomic<std::int64_t> runIndicator = 0;
};

/// The blocks live for the whole process, at one address.
HOST_API CmnGlb* pvGetCmnGlb();
HOST_API CmnSys* pvGetCmnSys();
