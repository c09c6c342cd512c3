#include "HostConversions.h"

#include <limits>
#include <memory>

#include "CFFormat.h"

#include "VexaCases.h"

namespace {

constexpr double kDayLength = 86400;
constexpr double kBaseDate = 12219379200.0;

} // namespace

double GetBaseDateNumber()
{
    return kBaseDate;
}

double NumericStorageStatToCF(double value, CFField::StorageType storage)
{
    // The highest number stands for the open end of a range, and is a number of no scale.
    if (value == kSystemMissing || value == std::numeric_limits<double>::max())
        return value;
    if (storage == CFField::Date)
        return (value - kBaseDate) / kDayLength;
    return storage == CFField::Timestamp ? value - kBaseDate : value;
}

double NumericStorageCFToStat(double value, CFField::StorageType storage)
{
    // The highest number stands for the open end of a range, and is a number of no scale.
    if (value == kSystemMissing || value == std::numeric_limits<double>::max())
        return value;
    if (storage == CFField::Date)
        return value * kDayLength + kBaseDate;
    return storage == CFField::Timestamp ? value + kBaseDate : value;
}

CFFormat* GetCFFieldFormat(const VEXA_Variable& variable)
{
    const VEXA_Format& format = variable.GetFormat();
    if (format.type == 0)
        return nullptr;
    return std::make_unique<CFFormat>(format.type, format.width, format.decimals).release();
}
