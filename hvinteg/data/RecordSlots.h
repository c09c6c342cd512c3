#pragma once

#include <cstddef>
#include <vector>

#include "ACAVarValidSpecs.h"
#include "CFField.h"
#include "VexaCases.h"
#include "VexaVariable.h"
#include "data/CaseCounts.h"

/// How a field is filled, settled before the first record.
struct RecordField
{
    CFField::StorageType storage = CFField::Real;
    bool isCaseCount = false;
    bool hasUserMissing = false;
    bool isPlain = false;                    ///< the slot takes the number as the host has it
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

    /// Finds out which fields are plain; after each change of the fields, or of which is special.
    void settle();
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
    RecordSlots() = default;
    RecordSlots(const RecordSlots& other);
    RecordSlots& operator=(const RecordSlots&) = delete;
    ~RecordSlots() = default;

    /// A slot for each field, with nothing in it until the first case.
    void clear(std::size_t fields);
    /// Fills the slots from the present case; the result is the weight of the case, 0 for one that
    /// is to be passed over. `counts` hears of weights that are rounded, if it is not null.
    double fill(const VEXA_InputCaseIterator& cases, const RecordRules& rules, CaseCounts* counts);

    /// The value as the row protocol has it; a missing one is a null pointer of length 0.
    void get(std::size_t field, void*& value, unsigned long long& length) const
    {
        const Slot& slot = _slots[field];
        const bool isThere = slot.number != kSystemMissing;
        value = isThere ? slot.pointer : nullptr;
        length = isThere ? slot.length : 0;
    }

private:
    /// A value, where it is and how long. The number of a text only says whether it is there.
    struct Slot
    {
        double number = kSystemMissing;
        void* pointer = nullptr;
        unsigned long long length = sizeof(double);
    };

    static void takeText(Slot& slot, int column, const VEXA_InputCaseIterator& cases,
                         const RecordRules& rules);
    double ruledNumber(std::size_t field, const VEXA_InputCaseIterator& cases,
                       const RecordRules& rules, double& weight, CaseCounts* counts) const;
    double numberOf(std::size_t field, const VEXA_InputCaseIterator& cases,
                    const RecordRules& rules) const;
    double incremented(double value, const RecordRules& rules) const;

    std::vector<Slot> _slots;
};
