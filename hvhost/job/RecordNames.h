#pragma once

#include <string>
#include <vector>

#include "hvhost/base/CommonOptions.h"

class InputFile;

/// Splits NAME=EXPRESSION at the first "=" that is not part of a comparison. Throws CommandFault
/// (Usage) for any other text.
Derivation splitDerivation(const std::string& text);

/// The names of a command's records: the variables of its file, and the fields that the command
/// derives.
class RecordNames
{
public:
    /// Throws CommandFault (Usage) for an invalid derivation.
    RecordNames(const InputFile& input, const RecordOptions& options);

    /// The record's own name for a name that the user wrote, by the rule of placeOfName. `origin`
    /// is the option that contains the name. If the engine reads the file, the names are unknown
    /// here: returns the name unchanged, and the engine accepts only an exact one.
    std::string own(const std::string& name, const std::string& origin) const;
    /// The same for a list of names. `option` precedes each of them.
    std::vector<std::string> own(const std::vector<std::string>& names,
                                 const std::string& option) const;

private:
    bool _isKnown;
    std::vector<std::string> _names;
};
