#pragma once

#include <cstdint>
#include <vector>

#include "ACAVarValidSpecs.h"
#include "CFMetaData.h"
#include "VexaDataSource.h"
#include "data/CaseCounts.h"

/// How a field is filled, settled before the first record.
struct RecordField
{
    CFField::StorageType storage = CFField::Real;
    bool isCaseCount = false;
    bool hasUserMissing = false;
    int width = 0;                           ///< of a text, in bytes
    const VEXA_Variable* variable = nullptr; ///< null for the case count
};

/// What a record looks like and how its weight counts.
struct RecordRules
{
    std::vector<RecordField> fields;
    int weightField = -1;
    int adjust = 0; ///< WeightAdjust
    const ACAVarValidSpecs* validSpecs = nullptr;
    bool excludeUserMissing = true;
    int incrementTarget = -1;
    int incrementSource = -1;
    double incrementValue = 0;
    bool trimsTabs = false;

    /// Whether user-missing values of a field count as missing.
    bool isExcluded(int field) const
    {
        if (!validSpecs)
            return excludeUserMissing;
        const ACAVarValidDesc* description = validSpecs->GetRecVarDescPtr(field);
        return description && description->GetExclUserMiss();
    }
};

/// The values of one record, as the engine takes them. Nothing is allocated from record to record.
class RecordSlots
{
public:
    /// A slot for each field, with nothing in it until the first case.
    void clear(const std::vector<RecordField>& fields);
    /// Fills the slots from the present case; the result is the weight of the case, 0 for one that
    /// is to be passed over. `counts` hears of weights that are rounded, if it is not null.
    double fill(const VEXA_InputCaseIterator& cases, const RecordRules& rules, CaseCounts* counts);

    /// The value as the row protocol has it; a missing one is a null pointer of length 0.
    void get(std::size_t field, bool isString, void*& value, unsigned long long& length)
    {
        Slot& slot = _slots[field];
        if (isString) {
            value = const_cast<char*>(slot.text);
            length = _lengths[field];
        } else if (slot.number == kSystemMissing) {
            value = nullptr;
            length = 0;
        } else {
            value = &slot.number;
            length = _lengths[field];
        }
    }

private:
    /// A number, or where the bytes of a text begin in the case.
    union Slot
    {
        double number;
        const char* text;
    };
    static_assert(sizeof(Slot) == 8, "a slot holds a number or a pointer");

    void fillText(std::size_t field, const VEXA_InputCaseIterator& cases, const RecordRules& rules);
    double numberOf(std::size_t field, const VEXA_InputCaseIterator& cases,
                    const RecordRules& rules) const;
    double incremented(double value, const RecordRules& rules) const;

    std::vector<Slot> _slots;
    std::vector<std::uint64_t> _lengths;
};
