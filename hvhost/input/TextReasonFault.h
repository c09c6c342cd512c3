#pragma once

#include <string>

#include "datafile/TextReasons.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/Text.h"

class InputFile;

/// A field has texts, and an option needs other values.
class TextFieldFault : public CommandFault
{
public:
    /// `field` is the name of the field, in UTF-8.
    TextFieldFault(std::string field, const std::string& text, std::string hint = {})
        : CommandFault(ExitStatus::Usage, text, std::move(hint)), _field(std::move(field))
    {
    }
    const std::string& field() const { return _field; }

private:
    std::string _field;
};

/// Says why a field is a text, for example: x is text because of "NA" on line 4.
std::string reasonText(const datafile::TextReason& reason, Wording wording = inEnglish);
/// The option that changes it. Empty if the command has no options for the form of a text.
std::string reasonHint(const datafile::TextReason& reason, const InputFile& input,
                       Wording wording = inEnglish);

/// The fault of a job that needs a number and has a text. If the field is a text because of a
/// single value, the text names the value and its line, and the hint an option. Other faults are
/// returned unchanged. Throws what the watch of the input throws.
CommandFault withTextReason(const CommandFault& fault, const InputFile& input);
/// The same for a fault that names the field.
CommandFault withTextReason(const TextFieldFault& fault, const InputFile& input);

/// Calls `work`. Adds the reason to a TextFieldFault.
template <class Work>
auto explainingTexts(const InputFile& input, Work work)
try {
    return work();
} catch (const TextFieldFault& fault) {
    throw withTextReason(fault, input);
}
