#include "data/RecordSlots.h"

#include <cmath>

#include "HostConversions.h"
#include "base/CivilTime.h"

namespace {

/// The length without trailing blanks and line ends, at least 1.
unsigned long long trimmedLength(const char* text, int width, bool trimsTabs)
{
    int at = width - 1;
    while (at > 0 && (text[at] == ' ' || text[at] == '\n' || (trimsTabs && text[at] == '\t')))
        --at;
    return static_cast<unsigned long long>(at) + 1;
}

/// Rounds halves up, as the host does.
double adjusted(double weight, WeightAdjust adjust)
{
    if (adjust == kWeightRound)
        return std::floor(weight + 0.5);
    return adjust == kWeightTruncate ? std::floor(weight) : weight;
}

/// The effective weight of a case; 0 means skip it.
double weightOf(double value, WeightAdjust adjust, CaseCounts* counts)
{
    if (value == kSystemMissing || !(value > 0))
        return 0;
    const double weight = adjusted(value, adjust);
    if (counts && adjust == kWeightRound)
        counts->judgeRounding(value, weight);
    return weight > 0 ? weight : 0;
}

} // namespace

void RecordRules::settle()
{
    for (std::size_t i = 0; i < fields.size(); ++i) {
        RecordField& field = fields[i];
        const int place = static_cast<int>(i);
        const bool isReal = field.storage == CFField::Real;
        // The weight and the increment are computed for each case.
        const bool isSpecial = isReal && (place == incrementTarget || place == weightField);
        const bool isOnScale =
            isReal || field.storage == CFField::Time || field.storage == CFField::Integer;
        field.isPlain = isOnScale && !isSpecial && !field.isCaseCount && !field.hasUserMissing;
    }
}

bool RecordRules::isIndependent(std::size_t field) const
{
    const auto place = static_cast<int>(field);
    return field < fields.size() && fields[field].storage != CFField::String &&
           !fields[field].isCaseCount && place != incrementTarget && place != weightField;
}

RecordSlots::RecordSlots(const RecordSlots& other) : _slots(other._slots)
{
    // A text pointer points into the case and is shared; a number pointer must point into the copy.
    for (std::size_t i = 0; i < _slots.size(); ++i)
        if (_slots[i].pointer == &other._slots[i].number)
            _slots[i].pointer = &_slots[i].number;
}

void RecordSlots::clear(std::size_t fields)
{
    _slots.assign(fields, Slot());
    for (Slot& slot : _slots)
        slot.pointer = &slot.number;
}

double RecordSlots::fill(const VEXA_InputCaseIterator& cases, const RecordRules& rules,
                         CaseCounts* counts)
{
    double weight = 1.0;
    // Copies of pointers and size: the compiler must assume that calls to the host change the
    // members.
    const std::size_t count = rules.fields.size();
    const RecordField* const fields = rules.fields.data();
    Slot* const slots = _slots.data();
    for (std::size_t i = 0; i < count; ++i) {
        const RecordField& field = fields[i];
        const int column = static_cast<int>(i);
        // The common case, and the hot loop.
        if (field.isPlain)
            slots[i].number = cases.GetNumericValue(column);
        else if (field.isCaseCount)
            slots[i].number = static_cast<double>(cases.GetCaseCount());
        else if (field.storage == CFField::String)
            takeText(slots[i], column, cases, rules);
        else
            slots[i].number = ruledNumber(i, cases, rules, weight, counts);
    }
    return weight;
}

/// Applies increment and weight, which only Real fields have.
double RecordSlots::ruledNumber(std::size_t field, const VEXA_InputCaseIterator& cases,
                                const RecordRules& rules, double& weight, CaseCounts* counts) const
{
    double value = rules.converted(cases.GetNumericValue(static_cast<int>(field)), field);
    if (rules.fields[field].storage != CFField::Real)
        return value;
    const int place = static_cast<int>(field);
    if (place == rules.incrementTarget)
        value = incremented(value, rules);
    if (place == rules.weightField) {
        weight = weightOf(value, rules.adjust, counts);
        if (weight > 0)
            value = weight;
    }
    return value;
}

double RecordRules::converted(double value, std::size_t field) const
{
    const RecordField& kind = fields[field];
    if (kind.hasUserMissing && isExcluded(static_cast<int>(field)) &&
        kind.variable->IsUserMissing(value))
        return kSystemMissing;
    // Before the conversion of dates, which would change the system-missing value.
    if (value == kSystemMissing)
        return value;
    if (kind.storage == CFField::Date)
        return (value - GetBaseDateNumber()) / base::kSecondsPerDay;
    return kind.storage == CFField::Timestamp ? value - GetBaseDateNumber() : value;
}

void RecordSlots::takeText(Slot& slot, int column, const VEXA_InputCaseIterator& cases,
                           const RecordRules& rules)
{
    const RecordField& kind = rules.fields[static_cast<std::size_t>(column)];
    const char* text = cases.GetStringValue(column);
    const bool isMissing =
        kind.hasUserMissing && rules.isExcluded(column) && kind.variable->IsUserMissing(text);
    slot.number = isMissing ? kSystemMissing : 0;
    // The protocol uses non-const pointers, but nothing writes through them.
    slot.pointer = const_cast<char*>(text);
    slot.length = trimmedLength(text, kind.width, rules.trimsTabs);
}

double RecordSlots::incremented(double value, const RecordRules& rules) const
{
    const double increment = rules.incrementValue;
    const bool hasIncrement = increment != kSystemMissing;
    const int source = rules.incrementSource;
    // Slots are filled in order, so a source behind the target still holds the previous case.
    if (source < 0 || source > rules.incrementTarget)
        return hasIncrement ? increment : value;
    if (source == rules.incrementTarget)
        return hasIncrement && value != kSystemMissing ? value + increment : value;
    const double other = _slots[static_cast<std::size_t>(source)].number;
    return hasIncrement && other != kSystemMissing ? other + increment : other;
}
