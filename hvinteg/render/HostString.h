#pragma once

#include <string>

#include "TnStrings.h"
#include "support/Transcoding.h"

/// A UTF-8 text as the host's output takes it, in the host's encoding. `isKey`: a key of the
/// host's string table.
inline TnString hostString(const std::string& text, bool isKey)
{
    return TnString(transcodeFromUTF8(text.c_str(), nullptr), isKey);
}
