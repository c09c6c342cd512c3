#pragma once

#include <atomic>
#include <cstdint>

#include "HostExport.h"

/// The global block, for the procedure's thread only. A setting above 0 is in force and is the
/// 1-based column of the variable.
struct CmnGlb
{
    std::int64_t weight = 0; ///< column of the weight variable
    std::int64_t split = 0;  ///< column of the first split variable
};

/// The system block. A run indicator of -1 tells the host to end the run. It is atomic, because a
/// cancelling thread may write it.
struct CmnSys
{
    std::atomic<std::int64_t> runIndicator = 0; ///< -1: end the run
};

/// The global block. It lives at a fixed address until the process ends.
HOST_API CmnGlb* pvGetCmnGlb();
/// The system block. It lives at a fixed address until the process ends.
HOST_API CmnSys* pvGetCmnSys();
