#include "steps/NormalizedModel.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "datafile/StorageWords.h"

namespace EmbeddedHV {
namespace {

constexpr double kTwoTo63 = 9223372036854775808.0;

/// Converts the datum to the type of the field if that does not change its value.
CFDatum ofKind(const CFDatum& datum, CFField::StorageType storage)
{
    if (storage == CFField::Integer) {
        if (!datum.IsReal() || std::trunc(datum.GetReal()) != datum.GetReal() ||
            datum.GetReal() < -kTwoTo63 || datum.GetReal() >= kTwoTo63)
            return datum;
        return CFDatum(static_cast<std::int64_t>(datum.GetReal()));
    }
    if (storage == CFField::String || !datum.IsInteger())
        return datum;
    const CFDatum real(static_cast<double>(datum.GetInteger()));
    return real.Compare(datum) == 0 ? real : datum;
}

/// Removes duplicates and sorts the values, unless their order is significant. Of equal values the
/// first is kept.
std::vector<CFValue> normalizedValues(const std::vector<CFValue>& values,
                                      CFField::StorageType storage, bool isOrdered)
{
    std::vector<CFValue> result;
    result.reserve(values.size());
    for (const CFValue& value : values)
        result.emplace_back(ofKind(value.GetDatum(), storage), value.GetLabel(),
                            value.GetProperty(), value.GetOrder());
    std::vector<std::pair<CFDatum, std::size_t>> places;
    places.reserve(values.size());
    for (std::size_t i = 0; i < result.size(); ++i)
        places.emplace_back(result[i].GetDatum(), i);
    const auto before = [](const auto& a, const auto& b) { return a.first.Compare(b.first) < 0; };
    // Stable, so that of equal values the first one, with its label, is kept.
    std::stable_sort(places.begin(), places.end(), before);
    places.erase(
        std::unique(places.begin(), places.end(),
                    [](const auto& a, const auto& b) { return a.first.Compare(b.first) == 0; }),
        places.end());
    if (isOrdered)
        std::sort(places.begin(), places.end(),
                  [](const auto& a, const auto& b) { return a.second < b.second; });
    std::vector<CFValue> picked;
    picked.reserve(places.size());
    for (const auto& [datum, place] : places)
        picked.push_back(result[place]);
    return picked;
}

bool isInside(const CFDatum& datum, const CFRange& range)
{
    if (datum.IsNull() || range.IsEmpty())
        return false;
    return (range.GetLower().IsNull() || datum.Compare(range.GetLower()) >= 0) &&
           (range.GetUpper().IsNull() || datum.Compare(range.GetUpper()) <= 0);
}

CFMissingValues normalizedMissing(const CFMissingValues& missing, CFField::StorageType storage)
{
    const CFRange range(ofKind(missing.GetRange().GetLower(), storage),
                        ofKind(missing.GetRange().GetUpper(), storage));
    std::vector<CFValue> values = normalizedValues(missing.GetValues(), storage, false);
    // Keep values with a label, even inside the range.
    std::erase_if(values, [&](const CFValue& value) {
        return value.GetLabel().empty() && isInside(value.GetDatum(), range);
    });
    return {range, std::move(values), missing.IsNullMissing(), missing.IsWhiteSpMissing()};
}

CFField::FieldType normalizedMeasure(const CFField& field)
{
    switch (field.GetType()) {
    case CFField::Typeless: // shapes have no measure
        return field.GetGeo() ? CFField::Typeless : defaultMeasure(field.GetStorage());
    case CFField::Discrete:
        return field.GetValues().size() == 2 ? CFField::Flag : CFField::Nominal;
    default:
        return field.GetType();
    }
}

void normalize(CFField& field)
{
    if (field.GetStorage() == CFField::Unknown)
        field.SetStorage(CFField::String); // a string can hold any value
    const CFField::StorageType storage = field.GetStorage();
    const bool isOrdered = field.GetType() == CFField::Ordinal;
    field.SetValues(normalizedValues(field.GetValues(), storage, isOrdered));
    field.SetType(normalizedMeasure(field));
    std::vector<CFValue> labels = field.GetValueLabels();
    std::erase_if(labels, [](const CFValue& value) { return value.GetLabel().empty(); });
    field.SetValueLabels(normalizedValues(labels, storage, isOrdered));
    if (field.GetMissingValues().IsValid())
        field.SetMissingValues(normalizedMissing(field.GetMissingValues(), storage));
}

} // namespace

Fields normalizedModel(Fields fields)
{
    for (CFField& field : fields)
        normalize(field);
    return fields;
}

} // namespace EmbeddedHV
