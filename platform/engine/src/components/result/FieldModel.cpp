#include "components/result/FieldModel.h"

#include <limits>

#include "components/result/ValueFormat.h"

namespace EmbeddedHV {
namespace {

std::string wordOrNothing(const char* word)
{
    return word ? word : "";
}

/// Readers accept only 32-bit integers as numbers. Other values are written as texts.
Json labelled(const CFDatum& datum)
{
    using Small = std::numeric_limits<std::int32_t>;
    if (datum.IsInteger() && datum.GetInteger() >= Small::min() &&
        datum.GetInteger() <= Small::max())
        return datum.GetInteger();
    return datum.ToString(-1);
}

Json valueLabels(const CFField& field)
{
    Json values = Json::array();
    Json labels = Json::array();
    for (const CFValue& value : field.GetValueLabels())
        if (!value.GetDatum().IsNull() && !value.GetLabel().empty()) {
            values.push_back(labelled(value.GetDatum()));
            labels.push_back(value.GetLabel());
        }
    return {{"values", std::move(values)}, {"labels", std::move(labels)}};
}

Json fieldOf(const CFField& field)
{
    Json result = {{"id", field.GetName()},
                   {"measurementLevel", wordOrNothing(WordOf(field.GetType()))},
                   {"storage", wordOrNothing(WordOf(field.GetStorage()))},
                   {"role", wordOrNothing(WordOf(field.GetRole()))},
                   {"label", field.GetLabel()},
                   {"format", fieldFormat(field)}};
    Json labels = valueLabels(field);
    if (!labels["values"].empty())
        result["valueLabels"] = std::move(labels);
    return result;
}

} // namespace

Json fieldModel(const std::string& name, const datafile::Fields& fields)
{
    Json list = Json::array();
    for (const CFField& field : fields)
        list.push_back(fieldOf(field));
    return {{"name", name}, {"fields", std::move(list)}};
}

} // namespace EmbeddedHV
