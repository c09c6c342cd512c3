#pragma once

#include <string>

#include "TnStrings.h"
#include "support/Transcoding.h"

/// Converts a UTF-8 text to a text of the host's output, in the host's encoding. `isKey`: the text
/// is a key of the host's string table.
inline TnString hostString(const std::string& text, bool isKey)
{
    return TnString(transcodeFromUTF8(text.c_str(), nullptr), isKey);
}
