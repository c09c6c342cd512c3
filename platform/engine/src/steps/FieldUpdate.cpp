#include "steps/FieldUpdate.h"

#include <charconv>
#include <cmath>
#include <utility>
#include <vector>

#include "datafile/StorageWords.h"
#include "runtime/DataModel.h"
#include "steps/SettingWords.h"
#include "steps/StorageChange.h"

namespace EmbeddedHV {
namespace {

/// The number if the whole text is a number; else empty.
template <typename Number>
std::optional<Number> numberIn(const std::string& text)
{
    Number value{};
    const char* end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, value);
    return error == std::errc() && last == end ? std::optional(value) : std::nullopt;
}

/// Parses a value. Empty if the text is not a value of the storage. An empty text is a missing
/// value if the storage is not String.
std::optional<CFDatum> datumOf(const std::string& text, CFField::StorageType storage)
{
    if (storage == CFField::String || storage == CFField::Unknown)
        return CFDatum(text);
    if (text.empty())
        return CFDatum();
    if (storage == CFField::Integer)
        if (const auto whole = numberIn<std::int64_t>(text))
            return CFDatum(*whole);
    const auto real = numberIn<double>(text);
    if (!real || std::isnan(*real))
        return std::nullopt;
    if (storage != CFField::Integer)
        return CFDatum(*real);
    // A large integer may be written with an exponent.
    constexpr double kTwoTo63 = 9223372036854775808.0;
    if (std::trunc(*real) != *real || *real < -kTwoTo63 || *real >= kTwoTo63)
        return std::nullopt;
    return CFDatum(static_cast<std::int64_t>(*real));
}

CFDatum neededDatum(const Settings& settings, const std::string& key, const std::string& text,
                    const CFField& field)
{
    auto datum = datumOf(text, field.GetStorage());
    if (!datum)
        settings.refuse(key, "is \"" + text + "\", which no value of the field \"" +
                                 field.GetName() + "\" can be: it is " +
                                 typeWordOf(field.GetStorage()));
    return *std::move(datum);
}

std::vector<CFValue> valueLabelsOf(const Settings& entry, const CFField& field,
                                   const MessageSink& message)
{
    const Json& list = entry.neededList("valueLabels");
    std::vector<CFValue> labels;
    for (std::size_t i = 0; i < list.size(); ++i) {
        const Settings label = entry.objectAt(list, "valueLabels", i);
        const auto text = label.text("value");
        CFDatum datum = text ? neededDatum(label, "value", *text, field) : CFDatum();
        labels.emplace_back(std::move(datum), label.text("displayLabel").value_or(""));
        label.reportOthers(message);
    }
    return labels;
}

CFDatum limitOf(const Settings& missing, const char* key, const CFField& field)
{
    const auto limit = missing.number(key);
    if (limit && field.GetStorage() == CFField::String)
        missing.refuse(key, "is a number, but the field \"" + field.GetName() + "\" is String");
    return limit ? numberAs(*limit, field.GetStorage()) : CFDatum();
}

CFMissingValues missingValuesOf(const Settings& missing, const CFField& field,
                                const MessageSink& message)
{
    CFRange range(limitOf(missing, "minValue", field), limitOf(missing, "maxValue", field));
    std::vector<CFValue> values;
    if (missing.has("Value")) {
        const Json& list = missing.neededList("Value");
        for (std::size_t i = 0; i < list.size(); ++i)
            values.emplace_back(neededDatum(missing, "Value[" + std::to_string(i) + "]",
                                            missing.textAt(list, "Value", i), field));
    }
    missing.reportOthers(message);
    // The step has no settings for these two. They keep their values, or get the defaults of a
    // document without them.
    const CFMissingValues& before = field.GetMissingValues();
    return {std::move(range), std::move(values), !before.IsValid() || before.IsNullMissing(),
            before.IsValid() && before.IsWhiteSpMissing()};
}

void updateStorage(const Settings& entry, CFField& field)
{
    const auto storage = wordSetting(entry, "storage", CFField::Integer);
    if (!storage || *storage == field.GetStorage())
        return;
    if (!isConvertible(field, *storage))
        entry.refuse("storage", "is \"" + std::string(WordOf(*storage)) + "\", but the field \"" +
                                    field.GetName() + "\" is " + typeWordOf(field.GetStorage()) +
                                    ", whose values do not convert");
    changeStorage(field, *storage);
    // Texts cannot have a continuous measure.
    if (*storage == CFField::String && field.GetType() == CFField::Continuous)
        field.SetType(defaultMeasure(*storage));
}

void updateGeo(const Settings& entry, CFField& field, const MessageSink& message)
{
    CFGeo geo = geoOf(entry.neededObject("Geo"), message);
    if (field.GetStorage() != CFField::String)
        entry.refuse("Geo", "is given, but the field \"" + field.GetName() + "\" is " +
                                typeWordOf(field.GetStorage()) +
                                ": the values of a geospatial field are texts");
    // Shapes have no measure.
    if (!field.GetGeo() && !entry.has("measure"))
        field.SetType(CFField::Typeless);
    field.SetGeo(std::move(geo));
}

} // namespace

void updateField(const Settings& entry, CFField& field, const MessageSink& message)
{
    updateStorage(entry, field);
    if (auto label = entry.text("displayLabel"))
        field.SetLabel(*std::move(label));
    if (const auto measure = wordSetting(entry, "measure", CFField::Continuous))
        field.SetType(*measure);
    if (const auto role = wordSetting(entry, "role", CFField::Input)) {
        if (*role == CFField::FrequencyWeight && field.GetStorage() == CFField::String)
            entry.refuse("role",
                         "is \"freqWeight\", but the field \"" + field.GetName() + "\" is String");
        field.SetRole(*role);
    }
    // After the storage, which determines the type of labels and missing values.
    if (entry.has("valueLabels"))
        field.SetValueLabels(valueLabelsOf(entry, field, message));
    if (entry.has("missingValues"))
        field.SetMissingValues(
            missingValuesOf(entry.neededObject("missingValues"), field, message));
    if (entry.has("Geo"))
        updateGeo(entry, field, message);
    entry.reportOthers(message);
}

} // namespace EmbeddedHV
