#include "data/FieldOfVariable.h"

#include <memory>
#include <utility>

#include "HostConversions.h"
#include "StorageOfFormat.h"
#include "support/Conversions.h"
#include "support/Transcoding.h"

namespace {

/// The host compares only this many bytes of a text with its missing values.
constexpr int kMissingTextWidth = 8;

/// Makes the values of one variable.
class ValueMaker
{
public:
    ValueMaker(const VEXA_Variable& variable, CFField::StorageType storage, void* converter)
        : _variable(variable), _storage(storage), _converter(converter)
    {
    }

    /// All values with a label, in ascending order.
    std::vector<CFValue> labelled() const
    {
        std::vector<CFValue> values;
        VEXA_ValueLabelMap labels = _variable.GetValueLabels();
        labels.Reset();
        const OBS* value = nullptr;
        const char* label = nullptr;
        while (labels.GetNextPair(value, label))
            values.emplace_back(isString() ? textDatum(hostText(value)) : numberDatum(value),
                                transcodeToUTF8(label, _converter), 0, 0);
        return values;
    }

    /// A single missing value, with its value label.
    CFValue missing(const OBS* value) const
    {
        const VEXA_ValueLabelMap& labels = _variable.GetValueLabels();
        if (!isString())
            return CFValue(numberDatum(value),
                           transcodeToUTF8(labels.GetLabel(value->number), _converter), 0, 0);
        std::string text;
        ConvertObsValToStr(value, kMissingTextWidth, text);
        const std::string label = transcodeToUTF8(labels.GetLabel(text), _converter);
        return CFValue(textDatum(text), label, 0, 0);
    }

    /// Converts to the engine's scale: the host counts dates in seconds from another origin.
    CFDatum numberDatum(const OBS* value) const
    {
        return CFDatum(NumericStorageStatToCF(value->number, _storage));
    }

private:
    bool isString() const { return _variable.GetType() > 0; }
    /// The text in the width of the variable's format, without trailing blanks.
    std::string hostText(const OBS* value) const
    {
        std::string text;
        ConvertObsValToStr(value, _variable, text);
        return text;
    }
    CFDatum textDatum(const std::string& text) const
    {
        return CFDatum(transcodeToUTF8(text.c_str(), _converter));
    }

    const VEXA_Variable& _variable;
    CFField::StorageType _storage;
    void* _converter;
};

void SetValueLabels(CFField& field, const ValueMaker& maker)
{
    if (std::vector<CFValue> labels = maker.labelled(); !labels.empty())
        field.SetValueLabels(std::move(labels));
}

/// The host's code is the number of single values, 1 to 3; -2 for a range; -3 for a range and one
/// value.
void SetMissingValues(CFField& field, const VEXA_Variable& variable, const ValueMaker& maker)
{
    const OBS* first = nullptr;
    const OBS* second = nullptr;
    const OBS* third = nullptr;
    const int code = variable.GetMissingValues(first, second, third);
    if (code == 0)
        return;
    CFRange range;
    std::vector<CFValue> values;
    // A range is numeric: string variables have only single values.
    if (code < 0)
        range = CFRange(maker.numberDatum(first), maker.numberDatum(second));
    if (code == -3)
        values.push_back(maker.missing(third));
    const OBS* const singles[] = {first, second, third};
    for (int i = 0; i < code; ++i)
        values.push_back(maker.missing(singles[i]));
    // The system-missing value is the engine's null and is always missing. Blank texts are valid
    // values.
    field.SetMissingValues(CFMissingValues(range, std::move(values), true, false));
}

} // namespace

CFField::FieldType fieldTypeOf(MeasurementLevel level, bool isString)
{
    switch (level) {
    // If the level is unknown, the type decides.
    case MeasurementLevel::Unknown:
    case MeasurementLevel::Scale:
        return isString ? CFField::Nominal : CFField::Continuous;
    case MeasurementLevel::Nominal:
        return CFField::Nominal;
    case MeasurementLevel::Ordinal:
        return CFField::Ordinal;
    default:
        return CFField::Typeless;
    }
}

CFField::RoleType roleOf(int hostRole)
{
    switch (hostRole) {
    case kRoleTarget:
        return CFField::Target;
    case kRoleBoth:
        return CFField::Both;
    case kRoleNone:
        return CFField::None;
    case kRolePartition:
        return CFField::Partition;
    default:
        return CFField::Input;
    }
}

CFField fieldOf(const VEXA_Variable& variable, MeasurementLevel level, CFField::RoleType role,
                void* converter)
{
    const CFField::StorageType storage = storageOfFormat(variable.GetFormat());
    CFField field(transcodeToUTF8(variable.GetName().c_str(), converter),
                  fieldTypeOf(level, variable.GetType() > 0), storage, role);
    if (const std::unique_ptr<CFFormat> format{GetCFFieldFormat(variable)})
        field.SetPrivateFormat(*format);
    if (const char* label = variable.GetLabel(); label && *label)
        field.SetLabel(transcodeToUTF8(label, converter));
    const ValueMaker maker(variable, storage, converter);
    SetValueLabels(field, maker);
    SetMissingValues(field, variable, maker);
    return field;
}
