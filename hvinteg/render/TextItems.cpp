#include "render/TextItems.h"

#include <algorithm>
#include <new>
#include <vector>

#include "HostValueText.h"
#include "TnValues.h"
#include "VexaCases.h"
#include "render/CellFormat.h"
#include "render/HostString.h"
#include "render/TextItemKind.h"
#include "support/Transcoding.h"

namespace {
/// The host does not accept an empty text.
constexpr const char* kBlank = " ";

/// A text in a date or time format for a field of the result; null for other storages.
std::unique_ptr<TnCellText> dateText(double value, const std::string& storage)
{
    const bool isTime = storage.substr(0, 4) == "time";
    if (!isTime && storage != "date")
        return nullptr;
    VEXA_Format format = CellFormat::yearFirstDate;
    if (isTime)
        format.type = storage == "time" ? std::uint8_t{kFormatTime} : std::uint8_t{kFormatDateTime};
    value = CellFormat::toHostDate(value, format, isTime);
    return std::make_unique<TnUTF8String>(CellFormat::textOf(value, format));
}

/// A value of a string variable; null if the text is too long or the variable is not a string
/// variable.
std::unique_ptr<TnCellText> stringValueText(const VEXA_Variable& variable, std::string value)
{
    const VEXA_Format& format = variable.GetFormat();
    if (format.type != kFormatString || variable.GetType() <= 0)
        return nullptr;
    value = transcodeFromUTF8(value.c_str(), nullptr);
    // A text cut to the variable's width would be another value, possibly with a label.
    if (value.size() > format.width)
        return nullptr;
    value.resize(std::size_t{format.width} + 1, ' ');
    value.back() = '\0';
    OBS blank;
    std::fill(std::begin(blank.text), std::end(blank.text), ' ');
    const int widest = std::max(variable.GetType(), int{format.width});
    std::vector<OBS> units(unitsOfWidth(widest), blank);
    if (FromString(value.c_str(), format, units.data()) != 0)
        return nullptr;
    return std::make_unique<TnDataValue>(variable, units.data(), TnDataValue::PreferHost);
}

/// The format of a composite that shows its parts one after the other.
std::string patternOf(std::size_t parts)
{
    std::string pattern;
    for (std::size_t part = 1; part <= parts; ++part)
        pattern += "^" + std::to_string(part);
    return pattern;
}
} // namespace

const TextItems::Kind* TextItems::kindOf(const JsonValue& body)
{
    static constexpr Kind kinds[] = {
        {"stringText", &TextItems::fixedText, &TextItems::fixedString},
        {"numericText", &TextItems::numberText, &TextItems::numberString},
        {"variableText", &TextItems::variableText, &TextItems::variableString},
        {"numericDataText", &TextItems::numberOfVariable, &TextItems::numberOfVariableString},
        {"stringDataText", &TextItems::stringOfVariable, &TextItems::stringOfVariableString},
        {"compositeText", &TextItems::compositeText, &TextItems::compositeString}};
    const auto* found = std::find_if(std::begin(kinds), std::end(kinds), [&](const Kind& kind) {
        return static_cast<bool>(body[kind.key]);
    });
    return found == std::end(kinds) ? nullptr : found;
}

std::unique_ptr<TnCellText> TextItems::cellTextOf(const JsonValue& item, bool translate) const
{
    const JsonValue body = item["text"];
    const Kind* kind = kindOf(body);
    if (kind == nullptr)
        return nullptr;
    try {
        return (this->*kind->text)(body[kind->key], translate);
    } catch (const std::bad_alloc&) {
        _hasLostText = true;
        return nullptr;
    }
}

TextItems::Text TextItems::fixedText(const JsonValue& body, bool translate) const
{
    const std::string value(body["value"].text());
    const std::string key(body["key"].text());
    const std::string helpId(body["helpId"].text());
    if (translate && !key.empty())
        return std::make_unique<TnString>(hostString(key, true));
    if (value.empty() && key.empty())
        return std::make_unique<TnUTF8String>(kBlank);
    if (key.empty() && helpId.empty())
        return std::make_unique<TnUTF8String>(value);
    return std::make_unique<TnUTF8String>(key.empty() ? value : key, value.empty() ? key : value,
                                          helpId);
}

TextItems::Text TextItems::numberText(const JsonValue& body, bool) const
{
    if (!body["value"].isNumber())
        return nullptr;
    const JsonValue json = body["format"];
    const VEXA_Format format =
        json.isObject() ? CellFormat::formatOf(json) : CellFormat::plainNumber;
    const double number = CellFormat::isInfinite(json)
                              ? kSystemMissing
                              : CellFormat::toHostDate(body["value"].number(), format, true);
    return std::make_unique<TnNumber>(number, TnFormatSpec(format));
}

TextItems::Text TextItems::variableText(const JsonValue& body, bool) const
{
    if (body["variable"].text().empty())
        return nullptr;
    const std::string name = FieldLookup::nameOf(body["variable"].text());
    if (const VEXA_Variable* variable = _fields.variable(name))
        // The host shows its variables as the user has chosen: by name, label or both.
        return std::make_unique<TnVariable>(*variable, TnVariable::ShowPreferred);
    const dataField* field = _fields.field(name);
    return std::make_unique<TnUTF8String>(field == nullptr ? name : field->getLabel());
}

TextItems::Text TextItems::numberOfVariable(const JsonValue& body, bool) const
{
    if (!body["value"].isNumber())
        return nullptr;
    const double value = body["value"].number();
    const TnFormatSpec general(CellFormat::generalNumber);
    if (body["variable"].text().empty())
        return std::make_unique<TnNumber>(value, general);
    const std::string name = FieldLookup::nameOf(body["variable"].text());
    const VEXA_Variable* variable = _fields.variable(name);
    if (variable != nullptr && variable->GetType() == 0) {
        OBS unit{};
        unit.number = CellFormat::toHostDate(value, variable->GetFormat(), false);
        return std::make_unique<TnDataValue>(*variable, &unit, TnDataValue::PreferHost);
    }
    const dataField* field = _fields.field(name);
    if (field == nullptr)
        return std::make_unique<TnNumber>(value, TnFormatSpec(CellFormat::plainNumber));
    if (Text date = dateText(value, field->getStorage()))
        return date;
    return std::make_unique<TnNumber>(value, general);
}

TextItems::Text TextItems::stringOfVariable(const JsonValue& body, bool) const
{
    const std::string value(body["value"].text());
    if (value.empty())
        return nullptr;
    const std::string name = FieldLookup::nameOf(body["variable"].text());
    const VEXA_Variable* variable = _fields.variable(name);
    Text text = variable == nullptr ? nullptr : stringValueText(*variable, value);
    if (text)
        return text;
    return std::make_unique<TnUTF8String>(value);
}

TextItems::Text TextItems::compositeText(const JsonValue& body, bool translate) const
{
    const JsonValue children = body["children"];
    if (!children.isArray())
        return nullptr;
    auto composite = std::make_unique<TnComposite>(patternOf(children.size()), false);
    for (const JsonValue child : children)
        if (const Text part = cellTextOf(child, translate))
            composite->Add(*part);
    composite->Finish();
    return composite;
}
