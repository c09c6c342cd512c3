#include "render/FieldLookup.h"

#include "support/Transcoding.h"

namespace {
/// The engine's prefix for the names of variables that it derives.
constexpr std::string_view kAliasPrefix = "@#$randsubj@#$_";
} // namespace

std::string FieldLookup::nameOf(std::string_view text)
{
    if (text.substr(0, kAliasPrefix.size()) == kAliasPrefix)
        text.remove_prefix(kAliasPrefix.size());
    return std::string(text);
}

const VEXA_Variable* FieldLookup::variable(const std::string& name) const
{
    if (_source == nullptr || name.empty())
        return nullptr;
    // Documents are UTF-8; the host stores names in its own encoding.
    const int column = _source->FindVarIndex(transcodeFromUTF8(name.c_str(), nullptr), 0);
    return column < 0 ? nullptr : &_source->GetVariable(column);
}

const dataField* FieldLookup::field(const std::string& name) const
{
    const dataField* field = _dictionary.findField(name);
    return field == nullptr || field->getName().empty() ? nullptr : field;
}

std::string FieldLookup::preferredLabel(const VEXA_Variable& variable)
{
    return transcodeToUTF8(variable.GetPreferredLabel().c_str(), nullptr);
}

std::string FieldLookup::valueLabel(const VEXA_Variable& variable, double value)
{
    return transcodeToUTF8(variable.GetValueLabels().GetLabel(value), nullptr);
}

std::string FieldLookup::valueLabel(const VEXA_Variable& variable, const std::string& value)
{
    const std::string text = transcodeFromUTF8(value.c_str(), nullptr);
    return transcodeToUTF8(variable.GetValueLabels().GetLabel(text), nullptr);
}
