#pragma once

#include <string>

#include "HostExport.h"

/// Messages in the host's wording: warnings that a procedure ignores a setting, and texts from the
/// host's string table.
class HOST_API ParserMessage
{
public:
    ParserMessage() = default;
    ParserMessage(const ParserMessage&) = delete;
    ParserMessage& operator=(const ParserMessage&) = delete;

    /// Warns that the weight is ignored: a note in the journal and a warning line in the output.
    void DisableWeight();
    /// Warns that the split is ignored: a note in the journal and a warning line in the output.
    void DisableSplit();
    /// The text for a key in the host's language and encoding; the key itself if there is no text.
    /// The texts are in `strings/<language>.json` of the installation, a JSON object of keys and
    /// texts.
    std::string GetTranslatedText(const std::string& key) const;
};
