#include "hvhost/input/ServedField.h"

#include <utility>
#include <vector>

#include "HostConversions.h"

namespace {

/// Converts days to the seconds of a timestamp.
double secondsOfDays(double days)
{
    const double moment = NumericStorageCFToStat(days, CFField::Date);
    return NumericStorageStatToCF(moment, CFField::Timestamp);
}
// Converts the host's seconds to the seconds of a timestamp.
double secondsOfHost(double moment)
{
    return NumericStorageStatToCF(moment, CFField::Timestamp);
}
using Conversion = double (*)(double);

CFDatum converted(const CFDatum& datum, Conversion conversion)
{
    return datum.IsReal() ? CFDatum(conversion(datum.GetReal())) : datum;
}

std::vector<CFValue> converted(const std::vector<CFValue>& given, Conversion conversion)
{
    std::vector<CFValue> values;
    values.reserve(given.size());
    for (const CFValue& value : given)
        values.emplace_back(converted(value.GetDatum(), conversion), value.GetLabel(),
                            value.GetProperty(), value.GetOrder());
    return values;
}

CFField asTimestamp(CFField field, Conversion conversion)
{
    field.SetStorage(CFField::Timestamp);
    field.SetValueLabels(converted(field.GetValueLabels(), conversion));
    const CFMissingValues missing = field.GetMissingValues();
    if (missing.IsValid())
        field.SetMissingValues({{converted(missing.GetRange().GetLower(), conversion),
                                 converted(missing.GetRange().GetUpper(), conversion)},
                                converted(missing.GetValues(), conversion),
                                missing.IsNullMissing(),
                                missing.IsWhiteSpMissing()});
    return field;
}

} // namespace

CFField servedField(const CFField& told, const CFField& known)
{
    if (told.GetStorage() != CFField::Real)
        return known;
    if (known.GetStorage() == CFField::Date)
        return asTimestamp(known, secondsOfDays);
    CFField field = known;
    if (known.GetStorage() == CFField::Time)
        field.SetStorage(CFField::Real);
    return field;
}

CFField declaredField(const CFField& told, const CFField& served)
{
    const bool isMoment =
        told.GetStorage() == CFField::Real && served.GetStorage() == CFField::Timestamp;
    return isMoment ? asTimestamp(told, secondsOfHost) : told;
}
