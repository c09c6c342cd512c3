#pragma once

#include "HostExport.h"
#include "TnAnnotation.h"
#include "TnHeading.h"
#include "TnPivotTable.h"
#include "TnStrings.h"
#include "TnValues.h"

/// Where a line is shown.
using TnErrorShow = int;
/// Severity: 0 only in the log, 1 comment, 2 warning, 3 error, 4 fatal, 5 catastrophic.
using TnErrorLevel = int;
inline constexpr TnErrorShow kShowInOutput = 2;
inline constexpr TnErrorLevel kLevelWarning = 2;
inline constexpr TnErrorLevel kLevelError = 3;

/// Writes a line to the host's output, at the present place in the current procedure. Any thread.
HOST_API void TnError(const TnCellText& text, TnErrorShow show, TnErrorLevel level);
