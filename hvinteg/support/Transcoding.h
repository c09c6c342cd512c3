#pragma once

#include <string>

#include "support/HvintegExport.h"

/// Text from the host's encoding to UTF-8, and back. `converter` is a handle from
/// VEXAMBConverterNew_A, or null for the host's own code page. A null text gives an empty result.
/// What has no counterpart comes out as a substitute; that is no failure. Any thread.
HVINTEG_EXPORT std::string transcodeToUTF8(const char* text, void* converter);
HVINTEG_EXPORT std::string transcodeFromUTF8(const char* text, void* converter);
