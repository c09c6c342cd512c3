#pragma once

#include <string>

#include "support/HvintegExport.h"

/// Converts text from the host's encoding to UTF-8. `converter` is a handle from
/// VEXAMBConverterNew_A, or null for the host's own code page. Characters without a counterpart
/// become a substitute; that is not an error. A null text gives an empty result. Any thread.
HVINTEG_EXPORT std::string transcodeToUTF8(const char* text, void* converter);
/// Converts text from UTF-8 to the host's encoding. `converter` is a handle from
/// VEXAMBConverterNew_A, or null for the host's own code page. Characters that the encoding lacks
/// become a substitute; that is not an error. A null text gives an empty result. Any thread.
HVINTEG_EXPORT std::string transcodeFromUTF8(const char* text, void* converter);
