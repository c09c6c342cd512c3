#include "data/DictionaryVariables.h"

#include <cmath>
#include <limits>
#include <set>

#include "HostConversions.h"
#include "StorageOfFormat.h"
#include "data/CaseText.h"
#include "text/CodePage.h"
#include "text/NameCase.h"

namespace {

using datafile::DictionaryFormat;
using datafile::DictionaryLevel;
using datafile::DictionaryMissing;
using datafile::DictionaryRole;
using datafile::DictionaryValue;
using datafile::DictionaryVariable;

/// A range without a limit extends to the lowest or highest number.
constexpr double kLowest = std::numeric_limits<double>::lowest();
constexpr double kHighest = std::numeric_limits<double>::max();

VEXA_Format formatOf(const DictionaryFormat& format)
{
    return {format.width, format.type, format.decimals};
}

DictionaryFormat formatOf(const VEXA_Format& format)
{
    return {format.type, format.width, format.decimals};
}

/// Converts numbers between the two scales. Only date and timestamp columns have their own scale:
/// dates in plain numeric columns, and their descriptions, are the host's seconds.
struct Scale
{
    CFField::StorageType storage;

    double toHost(const DictionaryValue& value) const
    {
        return NumericStorageCFToStat(std::get<double>(value), storage);
    }
    double fromHost(double value) const { return NumericStorageStatToCF(value, storage); }
    /// Adds a value to the list, unless the dictionary cannot represent it.
    void add(std::vector<DictionaryValue>& values, double value) const
    {
        if (std::isfinite(value))
            values.emplace_back(fromHost(value));
    }
};

std::string hostText(const DictionaryValue& value)
{
    return utf8ToHost(std::get<std::string>(value));
}

std::string utf8Text(const OBS* units, std::size_t bytes)
{
    const std::string_view text(units->text, bytes);
    return hostToUtf8(text.substr(0, trimmedLength(text)));
}

void setMissing(VEXA_Variable& variable, const DictionaryMissing& missing, const Scale& scale)
{
    if (variable.GetType() > 0) {
        std::vector<std::string> texts;
        for (const DictionaryValue& value : missing.values)
            texts.push_back(hostText(value));
        return variable.SetMissingValues(texts);
    }
    if (!missing.hasRange) {
        std::vector<double> numbers;
        for (const DictionaryValue& value : missing.values)
            numbers.push_back(scale.toHost(value));
        return variable.SetMissingValues(numbers);
    }
    const double from = missing.from ? scale.toHost(*missing.from) : kLowest;
    const double to = missing.to ? scale.toHost(*missing.to) : kHighest;
    if (missing.values.empty())
        variable.SetMissingRange(from, to);
    else
        variable.SetMissingRange(from, to, scale.toHost(missing.values.front()));
}

DictionaryMissing missingOf(const VEXA_Variable& variable, const Scale& scale)
{
    const OBS* values[3] = {};
    const int code = variable.GetMissingValues(values[0], values[1], values[2]);
    DictionaryMissing missing;
    if (code < 0) {
        missing.hasRange = true;
        // A limit at or beyond the lowest or highest number means no limit.
        if (values[0]->number > kLowest)
            missing.from = scale.fromHost(values[0]->number);
        if (values[1]->number < kHighest)
            missing.to = scale.fromHost(values[1]->number);
        if (code == -3)
            scale.add(missing.values, values[2]->number);
        return missing;
    }
    for (int i = 0; i < code; ++i) {
        if (variable.GetType() > 0)
            missing.values.emplace_back(utf8Text(values[i], variable.MissingTextWidth()));
        else
            scale.add(missing.values, values[i]->number);
    }
    return missing;
}

bool isTime(CFField::StorageType storage)
{
    return storage == CFField::Date || storage == CFField::Time || storage == CFField::Timestamp;
}

} // namespace

VEXA_Format formatOfStorage(CFField::StorageType storage, int width)
{
    switch (storage) {
    case CFField::Integer:
        return {8, kFormatNumber, 0};
    case CFField::Date:
        return {10, kFormatDateYearFirst, 0};
    case CFField::Time:
        return {8, kFormatTime, 0};
    case CFField::Timestamp:
        return {19, kFormatDateTimeYearFirst, 0};
    case CFField::String:
        return {static_cast<std::uint16_t>(width), kFormatString, 0};
    default:
        return {8, kFormatNumber, 2};
    }
}

VEXA_Variable variableOf(const DictionaryVariable& described, CFField::StorageType storage,
                         int width)
{
    VEXA_Variable variable(width);
    variable.SetName(utf8ToHost(described.name));
    variable.SetLabel(utf8ToHost(described.label));
    VEXA_Format print =
        described.print.type != 0 ? formatOf(described.print) : formatOfStorage(storage, width);
    // The values of a date column are on its scale, so its format must be a date format; and a text
    // format cannot show a number.
    const CFField::StorageType shown = storageOfFormat(print);
    if ((isTime(storage) && shown != storage) || (width > 0) != (shown == CFField::String))
        print = formatOfStorage(storage, width);
    variable.SetFormat(print);
    variable.SetWriteFormat(described.write.type != 0 ? formatOf(described.write) : print);
    variable.SetMeasurementLevel(static_cast<MeasurementLevel>(described.level));
    // The host has no role for a record id.
    variable.SetRole(described.role == DictionaryRole::RecordId ? static_cast<int>(kRoleNone)
                                                                : static_cast<int>(described.role));
    const Scale scale{storage};
    VEXA_ValueLabelMap labels(width);
    for (const auto& [value, label] : described.valueLabels) {
        if (width > 0)
            labels.SetLabel(hostText(value), utf8ToHost(label));
        else
            labels.SetLabel(scale.toHost(value), utf8ToHost(label));
    }
    variable.SetValueLabels(labels);
    setMissing(variable, described.missing, scale);
    return variable;
}

DictionaryVariable descriptionOf(const VEXA_Variable& variable, CFField::StorageType storage)
{
    DictionaryVariable described;
    described.name = hostToUtf8(variable.GetName());
    if (const char* label = variable.GetLabel())
        described.label = hostToUtf8(label);
    described.isText = variable.GetType() > 0;
    described.width = variable.GetType();
    const auto level = static_cast<int>(variable.GetMeasurementLevel());
    // Unknown numbers, for example of a later host, become the default.
    described.level = static_cast<DictionaryLevel>(level >= 0 && level <= 3 ? level : 0);
    const int role = variable.GetRole();
    described.role = static_cast<DictionaryRole>(role >= 0 && role <= 4 ? role : 0);
    described.print = formatOf(variable.GetFormat());
    described.write = formatOf(variable.GetWriteFormat());
    const Scale scale{storage};
    VEXA_ValueLabelMap labels = variable.GetValueLabels();
    labels.Reset();
    const OBS* value = nullptr;
    const char* label = nullptr;
    while (labels.GetNextPair(value, label)) {
        if (variable.GetType() > 0)
            described.valueLabels.emplace_back(
                utf8Text(value, static_cast<std::size_t>(variable.GetType())), hostToUtf8(label));
        else if (std::isfinite(value->number))
            described.valueLabels.emplace_back(scale.fromHost(value->number), hostToUtf8(label));
    }
    described.missing = missingOf(variable, scale);
    return described;
}

void tellNamesApart(std::vector<VEXA_Variable>& variables)
{
    std::set<std::u16string> used;
    for (VEXA_Variable& variable : variables) {
        const std::string given = variable.GetName();
        for (int number = 1; !used.insert(foldedName(variable.GetName())).second; ++number)
            variable.SetName(given + "_" + std::to_string(number));
    }
}
