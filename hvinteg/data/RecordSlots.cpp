#include "data/RecordSlots.h"

#include <cmath>

#include "HostConversions.h"
#include "data/HVRawDataIterator.h"

namespace {

constexpr double kSecondsPerDay = 86400.0;
constexpr std::uint64_t kNumberLength = 8;

/// The length of a text without what fills it up; the first byte always counts.
std::uint64_t trimmedLength(const char* text, int width, bool trimsTabs)
{
    int at = width - 1;
    while (at > 0 && (text[at] == ' ' || text[at] == '\n' || (trimsTabs && text[at] == '\t')))
        --at;
    return static_cast<std::uint64_t>(at) + 1;
}

double adjusted(double weight, int adjust)
{
    if (adjust == kWeightRound)
        return std::floor(weight + 0.5);
    return adjust == kWeightTruncate ? std::floor(weight) : weight;
}

/// The weight that a case counts with; 0 for one that does not count.
double weightOf(double value, int adjust, CaseCounts* counts)
{
    if (value == kSystemMissing || !(value > 0))
        return 0;
    const double weight = adjusted(value, adjust);
    if (counts && adjust == kWeightRound)
        counts->judgeRounding(value, weight);
    return weight > 0 ? weight : 0;
}

} // namespace

void RecordSlots::clear(const std::vector<RecordField>& fields)
{
    _slots.assign(fields.size(), Slot{kSystemMissing});
    _lengths.assign(fields.size(), kNumberLength);
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (fields[i].storage == CFField::String) {
            _slots[i].text = nullptr;
            _lengths[i] = 0;
        }
}

double RecordSlots::fill(const VEXA_InputCaseIterator& cases, const RecordRules& rules,
                         CaseCounts* counts)
{
    double weight = 1.0;
    for (std::size_t i = 0; i < rules.fields.size(); ++i) {
        const RecordField& field = rules.fields[i];
        if (field.isCaseCount) {
            _slots[i].number = static_cast<double>(cases.GetCaseCount());
            continue;
        }
        if (field.storage == CFField::String) {
            fillText(i, cases, rules);
            continue;
        }
        double value = numberOf(i, cases, rules);
        if (field.storage == CFField::Real) {
            const int place = static_cast<int>(i);
            if (place == rules.incrementTarget)
                value = incremented(value, rules);
            if (place == rules.weightField) {
                weight = weightOf(value, rules.adjust, counts);
                if (weight > 0)
                    value = weight;
            }
        }
        _slots[i].number = value;
    }
    return weight;
}

double RecordSlots::numberOf(std::size_t field, const VEXA_InputCaseIterator& cases,
                             const RecordRules& rules) const
{
    const RecordField& kind = rules.fields[field];
    const int column = static_cast<int>(field);
    const double value = cases.GetNumericValue(column);
    if (kind.hasUserMissing && rules.isExcluded(column) && kind.variable->IsUserMissing(value))
        return kSystemMissing;
    if (value == kSystemMissing)
        return value;
    if (kind.storage == CFField::Date)
        return (value - GetBaseDateNumber()) / kSecondsPerDay;
    return kind.storage == CFField::Timestamp ? value - GetBaseDateNumber() : value;
}

void RecordSlots::fillText(std::size_t field, const VEXA_InputCaseIterator& cases,
                           const RecordRules& rules)
{
    const RecordField& kind = rules.fields[field];
    const int column = static_cast<int>(field);
    const char* text = cases.GetStringValue(column);
    const bool isMissing =
        kind.hasUserMissing && rules.isExcluded(column) && kind.variable->IsUserMissing(text);
    _slots[field].text = isMissing ? nullptr : text;
    _lengths[field] = isMissing ? 0 : trimmedLength(text, kind.width, rules.trimsTabs);
}

double RecordSlots::incremented(double value, const RecordRules& rules) const
{
    const double increment = rules.incrementValue;
    const bool hasIncrement = increment != kSystemMissing;
    const int source = rules.incrementSource;
    if (source < 0 || source > rules.incrementTarget)
        return hasIncrement ? increment : value;
    if (source == rules.incrementTarget)
        return hasIncrement && value != kSystemMissing ? value + increment : value;
    const double other = _slots[static_cast<std::size_t>(source)].number;
    return hasIncrement && other != kSystemMissing ? other + increment : other;
}
