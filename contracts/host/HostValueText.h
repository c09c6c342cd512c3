#pragma once

#include "HostExport.h"
#include "Obs.h"
#include "VexaFormat.h"

/// Formats a value as text of exactly `format.width` bytes in the host's encoding, without
/// terminator. Numbers are right-aligned, texts left-aligned, and padded with blanks. The
/// system-missing value is a dot. A number that is too long loses decimals, then becomes scientific
/// notation, then asterisks. Returns 0 for success; otherwise the buffer is blank. Any thread.
HOST_API int ToString(const OBS* value, const VEXA_Format& format, char* buffer);

/// Reads a text of `format.width` bytes by the rules of the format. A string format fills as many
/// units of 8 bytes as the width needs. Returns 0 for success; otherwise the value is
/// system-missing or blank. Any thread.
HOST_API int FromString(const char* text, const VEXA_Format& format, OBS* value);
