#include "components/result/ValueFormat.h"

#include <cmath>

namespace EmbeddedHV {
namespace {

/// A format type of the host, and its equivalent in a result document.
struct FormatWord
{
    int type;
    const char* key;
    const char* text;
};
constexpr FormatWord kDresses[] = {{3, "thousandsSeparator", ","},
                                   {4, "prefix", "$"},
                                   {31, "suffix", "%"},
                                   {32, "thousandsSeparator", "."}};
constexpr FormatWord kDatePatterns[] = {{20, "dateTimePattern", "dd-MMM-yyyy"},
                                        {23, "dateTimePattern", "MM/dd/yyyy"},
                                        {38, "dateTimePattern", "dd.MM.yyyy"},
                                        {39, "dateTimePattern", "yyyy/MM/dd"}};
constexpr FormatWord kTimePatterns[] = {{85, "dateTimePattern", "mm:ss"}};
constexpr FormatWord kTimestampPatterns[] = {{22, "dateTimePattern", "dd-MMM-yyyy HH:mm:ss"}};

int typeOf(const CFField& field)
{
    return field.GetPrivateFormat() ? field.GetPrivateFormat()->GetType() : 0;
}

template <std::size_t N>
const char* wordOf(const FormatWord (&words)[N], const CFField& field, const char* otherwise)
{
    for (const FormatWord& word : words)
        if (word.type == typeOf(field))
            return word.text;
    return otherwise;
}

const char* patternOf(const CFField& field)
{
    switch (field.GetStorage()) {
    case CFField::Date:
        return wordOf(kDatePatterns, field, "yyyy-MM-dd");
    case CFField::Time:
        return wordOf(kTimePatterns, field, "HH:mm:ss");
    case CFField::Timestamp:
        return wordOf(kTimestampPatterns, field, "yyyy-MM-dd HH:mm:ss");
    default:
        return nullptr;
    }
}

const char* formatKeyOf(const CFField& field)
{
    switch (field.GetStorage()) {
    case CFField::Date:
    case CFField::Timestamp:
        return "dateFormat";
    case CFField::Time:
        return "timeFormat";
    case CFField::Integer:
    case CFField::Real:
        return "numberFormat";
    default:
        return "stringFormat";
    }
}

} // namespace

Json numberJson(double value)
{
    constexpr double kExact = 9007199254740992;
    if (!std::isfinite(value))
        return nullptr;
    // Whole numbers without a decimal point, as readers expect for counts.
    if (value == std::floor(value) && std::abs(value) <= kExact)
        return static_cast<std::int64_t>(value);
    return value;
}

Json numberFormat(int decimals)
{
    return {{"decimals", decimals}};
}

Json valueFormat(const CFField& field, int decimals)
{
    if (const char* pattern = patternOf(field))
        return {{"dateTimePattern", pattern}};
    Json format = numberFormat(decimals);
    for (const FormatWord& dress : kDresses)
        if (dress.type == typeOf(field))
            format[dress.key] = dress.text;
    return format;
}

Json fieldFormat(const CFField& field)
{
    Json content = Json::object();
    if (const CFFormat* format = field.GetPrivateFormat()) {
        content["formatType"] = format->GetType();
        content["width"] = format->GetWidth();
    }
    if (const auto decimals = decimalsOf(field))
        content["decimalPlaces"] = *decimals;
    return {{formatKeyOf(field), std::move(content)}};
}

std::optional<int> decimalsOf(const CFField& field)
{
    const bool isNumber =
        field.GetStorage() == CFField::Integer || field.GetStorage() == CFField::Real;
    if (!isNumber)
        return std::nullopt;
    if (const CFFormat* format = field.GetPrivateFormat())
        return std::min<int>(format->GetDecimals(), kMostDecimals);
    return field.GetStorage() == CFField::Integer ? std::optional(0) : std::nullopt;
}

} // namespace EmbeddedHV
