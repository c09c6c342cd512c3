#pragma once

#include <string>

#include "HostExport.h"

/// A text of the host's front end, in the host's encoding.
using TN_Character = std::string;

/// Shows a line in the host's front end; `channel` 1 is the line view. Any thread.
HOST_API void TN_ToFront(const long long& channel, const TN_Character& line);
