#pragma once

#include "HostExport.h"
#include "TnAnnotation.h"
#include "TnHeading.h"
#include "TnPivotTable.h"
#include "TnStrings.h"
#include "TnValues.h"

/// Where a line is shown.
using TnErrorShow = int;
/// How grave it is: 0 only in the log, 1 a comment, 2 a warning, 3 an error, 4 fatal, 5
/// catastrophic.
using TnErrorLevel = int;
inline constexpr TnErrorShow kShowInOutput = 2;
inline constexpr TnErrorLevel kLevelWarning = 2;
inline constexpr TnErrorLevel kLevelError = 3;

/// Puts a line into the host's output: into the current procedure's, where it arises. Any thread.
HOST_API void TnError(const TnCellText& text, TnErrorShow show, TnErrorLevel level);
