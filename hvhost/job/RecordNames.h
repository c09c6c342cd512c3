#pragma once

#include <optional>
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
    /// Throws CommandFault (Usage) for an invalid derivation. Borrows the input.
    RecordNames(const InputFile& input, const RecordOptions& options);
    /// The names of fields that the command computes, and those that it derives from them.
    RecordNames(std::vector<std::string> fields, const RecordOptions& options);

    /// The record's own name for a name that the user wrote, by the rule of placeOfName. `origin`
    /// is the option that contains the name. If the file cannot be opened here, returns the name
    /// unchanged; the engine then reports the error of the file.
    std::string own(const std::string& name, const std::string& origin) const;
    /// The same for a list of names. `option` precedes each of them.
    std::vector<std::string> own(const std::vector<std::string>& names,
                                 const std::string& option) const;

private:
    const std::vector<std::string>& names() const;

    const InputFile* _input; ///< null if the names are given
    std::vector<std::string> _derived;
    mutable std::optional<std::vector<std::string>> _names; ///< filled by the first look-up
};
