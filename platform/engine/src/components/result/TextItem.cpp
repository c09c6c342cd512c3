#include "components/result/TextItem.h"

#include "components/result/ValueFormat.h"

namespace EmbeddedHV::text {
namespace {

/// For a field without a format, readers show this number of decimals.
constexpr std::size_t kDecimalsShown = 3;

Json item(const char* variant, Json content)
{
    return {{"text", {{variant, std::move(content)}}}};
}

bool hasLabel(const CFField& field, const CFDatum& datum)
{
    return CFValue::GetIndex(datum, field.GetValueLabels()) >= 0;
}

/// The number of decimals in the shortest form of a number.
std::size_t decimalsOf(const CFDatum& datum)
{
    const std::string shortest = datum.ToString(-1);
    const auto point = shortest.find('.');
    const auto exponent = shortest.find("e-");
    if (exponent != std::string::npos)
        return kMostDecimals;
    return point == std::string::npos ? 0 : std::min(shortest.size() - point - 1, kMostDecimals);
}

Json numericValue(const CFField& field, const CFDatum& datum)
{
    const Json content = {
        {"value", datum.IsInteger() ? Json(datum.GetInteger()) : Json(datum.GetReal())},
        {"variable", field.GetName()}};
    return item("numericDataText", content);
}

} // namespace

Json fixed(const std::string& english)
{
    return item("stringText", {{"key", english}, {"value", english}});
}

Json plain(const std::string& text)
{
    return item("stringText", {{"value", text}});
}

Json field(const std::string& name)
{
    return item("variableText", {{"variable", name}});
}

Json number(double value, Json format)
{
    return item("numericText", {{"value", value}, {"format", std::move(format)}});
}

Json value(const CFField& field, const CFDatum& datum, const std::string& empty)
{
    if (datum.IsString())
        return datum.GetString().empty() ? plain(empty)
                                         : item("stringDataText", {{"value", datum.GetString()},
                                                                   {"variable", field.GetName()}});
    // Readers disagree whether a timestamp of a field is in days or in seconds. As a number with a
    // format, it is in seconds for all of them.
    if (field.GetStorage() == CFField::Timestamp)
        return number(datum.GetReal(), valueFormat(field, 0));
    const std::size_t decimals = datum.IsReal() ? decimalsOf(datum) : 0;
    if (decimals > kDecimalsShown && !hasLabel(field, datum))
        return number(datum.GetReal(), valueFormat(field, static_cast<int>(decimals)));
    return numericValue(field, datum);
}

Json composite(std::vector<Json> items)
{
    return item("compositeText", {{"children", std::move(items)}});
}

} // namespace EmbeddedHV::text
