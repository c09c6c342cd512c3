#pragma once

#include "HostExport.h"
#include "Obs.h"
#include "VexaFormat.h"

/// A value as text in a format: exactly `format.width` bytes in the host's encoding, numbers at the
/// right end, texts at the left, blanks beside them, and no terminator. The system missing value is
/// a dot. A number that is too long for the width loses decimals, then turns to scientific
/// notation, then to asterisks. 0 for success; else the buffer is blank. Any thread.
HOST_API int ToString(const OBS* value, const VEXA_Format& format, char* buffer);

/// The value of a text of `format.width` bytes, read by the format's rules; a string format fills
/// as many units of 8 bytes as the width takes. 0 for success; else the value is system missing, or
/// blank. Any thread.
HOST_API int FromString(const char* text, const VEXA_Format& format, OBS* value);
