#pragma once

#include <cstddef>
#include <vector>

#include "ACAVarValidSpecs.h"
#include "CFField.h"
#include "VexaCases.h"
#include "VexaVariable.h"
#include "data/CaseCounts.h"
#include "data/WeightAdjust.h"

/// How to fill a field, decided before the first record.
struct RecordField
{
    CFField::StorageType storage = CFField::Real;
    bool isCaseCount = false;
    bool hasUserMissing = false;
    bool isPlain = false;                    ///< the value is the host's number, unchanged
    int width = 0;                           ///< of a string, in bytes
    const VEXA_Variable* variable = nullptr; ///< null for the case count
};

/// The fields of a record and the rules for weights, missing values and the increment.
struct RecordRules
{
    std::vector<RecordField> fields;
    int weightField = -1;
    WeightAdjust adjust = kWeightRound;
    const ACAVarValidSpecs* validSpecs = nullptr;
    bool excludeUserMissing = true;
    int incrementTarget = -1;
    int incrementSource = -1;
    double incrementValue = kSystemMissing;
    bool trimsTabs = false;

    /// Determines which fields are plain. Call it after each change of the fields, the weight or
    /// the increment.
    void settle();
    /// The number of a case in the engine's form, without weight and increment.
    double converted(double value, std::size_t field) const;
    /// Whether a field is a number that only depends on its own case.
    bool isIndependent(std::size_t field) const;
    /// Whether user-missing values of a field count as missing.
    bool isExcluded(int field) const
    {
        if (!validSpecs)
            return excludeUserMissing;
        const ACAVarValidDesc* description = validSpecs->GetRecVarDescPtr(field);
        return description && description->GetExclUserMiss();
    }
};

/// The values of one record in the engine's form. Filling a record allocates nothing.
class RecordSlots
{
public:
    RecordSlots() = default;
    RecordSlots(const RecordSlots& other);
    RecordSlots& operator=(const RecordSlots&) = delete;
    ~RecordSlots() = default;

    /// Makes a missing value for each field.
    void clear(std::size_t fields);
    /// Fills the slots from the current case. Returns the weight of the case; 0 means skip it.
    /// `counts` may be null; otherwise it receives the weights that are rounded.
    double fill(const VEXA_InputCaseIterator& cases, const RecordRules& rules, CaseCounts* counts);

    /// Returns a value in the form of the row protocol: a missing one is a null pointer and length
    /// 0.
    void get(std::size_t field, void*& value, unsigned long long& length) const
    {
        const Slot& slot = _slots[field];
        const bool isThere = slot.number != kSystemMissing;
        value = isThere ? slot.pointer : nullptr;
        length = isThere ? slot.length : 0;
    }

private:
    /// A value with its address and length. For a text, the number only says whether it is missing.
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
    double incremented(double value, const RecordRules& rules) const;

    std::vector<Slot> _slots;
};
