#include "TnValues.h"

#include <string>

#include "VexaVariable.h"
#include "data/CaseText.h"
#include "text/CodePage.h"
#include "values/ValueText.h"

namespace {

// The text of a string value, in the width of the variable.
std::string stringOf(const VEXA_Variable& variable, const OBS* value)
{
    return {value->text, static_cast<std::size_t>(variable.GetType())};
}

const char* labelOf(const VEXA_Variable& variable, const OBS* value)
{
    const VEXA_ValueLabelMap& labels = variable.GetValueLabels();
    return variable.GetType() > 0 ? labels.GetLabel(stringOf(variable, value))
                                  : labels.GetLabel(value->number);
}

TnContent contentOf(const VEXA_Variable& variable, const OBS* value)
{
    TnContent content;
    content.format = variable.GetFormat();
    if (variable.GetType() > 0) {
        const std::string text = stringOf(variable, value);
        content.text = hostToUtf8(std::string_view(text).substr(0, trimmedLength(text)));
    } else {
        content.number = value->number;
        content.text = valueText(value->number, content.format);
    }
    return content;
}

} // namespace

TnContent TnNumber::content() const
{
    TnContent content;
    content.text = valueText(_value, format());
    content.number = _value;
    content.format = format();
    return content;
}

std::unique_ptr<TnCellText> TnNumber::clone() const
{
    return std::make_unique<TnNumber>(*this);
}

TnVariable::TnVariable(const VEXA_Variable& variable, Show show)
{
    _content.text =
        hostToUtf8(show == ShowName ? variable.GetName() : variable.GetPreferredLabel());
    _content.key = hostToUtf8(variable.GetName());
}

TnContent TnVariable::content() const
{
    return _content;
}

std::unique_ptr<TnCellText> TnVariable::clone() const
{
    return std::make_unique<TnVariable>(*this);
}

TnDataValue::TnDataValue(const VEXA_Variable& variable, const OBS* value, Preference preference)
{
    if (!value)
        return;
    const char* label = preference == PreferValue ? nullptr : labelOf(variable, value);
    if (label)
        _content.text = hostToUtf8(label);
    else
        _content = contentOf(variable, value);
}

TnContent TnDataValue::content() const
{
    return _content;
}

std::unique_ptr<TnCellText> TnDataValue::clone() const
{
    return std::make_unique<TnDataValue>(*this);
}
