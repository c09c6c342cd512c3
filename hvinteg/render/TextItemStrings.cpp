#include "VexaCases.h"
#include "render/CellFormat.h"
#include "render/TextItemKind.h"
#include "render/TextItems.h"

namespace {
/// The format for values of a result's own field, by storage, and whether its values are seconds
/// instead of days.
struct Storage
{
    const char* name;
    std::uint8_t type;
    bool isSeconds;
};
constexpr Storage kStorages[] = {{"date", kFormatDateYearFirst, false},
                                 {"time", kFormatTime, true},
                                 {"timestamp", kFormatDateTime, true}};

/// The text that the host shows for a value on the result's scale.
std::string numberIn(double value, const VEXA_Format& format, bool isSeconds)
{
    return CellFormat::textOf(CellFormat::toHostDate(value, format, isSeconds), format);
}

/// The text for a field of the result: the value's label, or the value in the format of its
/// storage.
std::string numberOfField(double value, const dataField* field)
{
    VEXA_Format format = CellFormat::generalNumber;
    if (field == nullptr)
        return numberIn(value, format, false);
    std::string label = field->getValueLabel(value);
    if (!label.empty())
        return label;
    for (const Storage& storage : kStorages)
        if (field->getStorage() == storage.name) {
            format.type = storage.type;
            return numberIn(value, format, storage.isSeconds);
        }
    return numberIn(value, format, false);
}
} // namespace

std::string TextItems::cellTextString(const JsonValue& item) const
{
    const JsonValue body = item["text"];
    const Kind* kind = kindOf(body);
    return kind == nullptr ? std::string() : (this->*kind->string)(body[kind->key]);
}

std::string TextItems::fixedString(const JsonValue& body) const
{
    const auto value = body["value"].text();
    return std::string(value.empty() ? body["key"].text() : value);
}

std::string TextItems::numberString(const JsonValue& body) const
{
    if (!body["value"].isNumber())
        return {};
    const JsonValue json = body["format"];
    const VEXA_Format format =
        json.isObject() ? CellFormat::formatOf(json) : CellFormat::generalNumber;
    if (CellFormat::isInfinite(json))
        return CellFormat::textOf(kSystemMissing, format);
    return numberIn(body["value"].number(), format, true);
}

std::string TextItems::variableString(const JsonValue& body) const
{
    const std::string name = FieldLookup::nameOf(body["variable"].text());
    if (const VEXA_Variable* variable = _fields.variable(name))
        return FieldLookup::preferredLabel(*variable);
    const dataField* field = _fields.field(name);
    return field == nullptr ? name : field->getLabel();
}

std::string TextItems::numberOfVariableString(const JsonValue& body) const
{
    if (!body["value"].isNumber() || body["variable"].text().empty())
        return {};
    const double value = body["value"].number();
    const std::string name = FieldLookup::nameOf(body["variable"].text());
    const VEXA_Variable* variable = _fields.variable(name);
    if (variable == nullptr || variable->GetType() != 0)
        return numberOfField(value, _fields.field(name));
    const std::string label = FieldLookup::valueLabel(*variable, value);
    return label.empty() ? numberIn(value, variable->GetFormat(), false) : label;
}

std::string TextItems::stringOfVariableString(const JsonValue& body) const
{
    std::string value(body["value"].text());
    if (value.empty() || body["variable"].text().empty())
        return value;
    const std::string name = FieldLookup::nameOf(body["variable"].text());
    std::string label;
    if (const VEXA_Variable* variable = _fields.variable(name))
        label = FieldLookup::valueLabel(*variable, value);
    else if (const dataField* field = _fields.field(name))
        label = field->getValueLabel(value);
    return label.empty() ? value : label;
}

std::string TextItems::compositeString(const JsonValue& body) const
{
    std::string text;
    const JsonValue children = body["children"];
    for (const JsonValue child : children)
        text += cellTextString(child);
    return text;
}
