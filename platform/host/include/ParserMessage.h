#pragma once

#include <string>

#include "HostExport.h"

/// Messages that the host words: warnings that a procedure does not honour a setting, and texts by
/// key from the host's string table.
class HOST_API ParserMessage
{
public:
    ParserMessage() = default;
    ParserMessage(const ParserMessage&) = delete;
    ParserMessage& operator=(const ParserMessage&) = delete;

    /// Warn that the weight, or the split, is ignored: a note, and a warning line in the output.
    void DisableWeight();
    void DisableSplit();
    /// The text of a key in the host's language and encoding; the key itself where there is none.
    /// Texts stand in `strings/<language>.json` of the installation, one object of keys and texts.
    std::string GetTranslatedText(const std::string& key) const;
};
