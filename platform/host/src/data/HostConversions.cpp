#include "HostConversions.h"

#include <cmath>
#include <limits>
#include <memory>

#include "CFFormat.h"
#include "base/CivilTime.h"

#include "VexaCases.h"
#include "base/TimestampScale.h"

namespace {

/// Numbers beyond this limit are not points in time, for example limits of ranges.
constexpr double kFarthestSeconds = 1e12;

/// Converts to the scale of rows and data models, without the digits that the host's scale adds.
double rowSecondsOf(double hostSeconds)
{
    const double seconds = hostSeconds - base::kHostEpoch;
    return std::fabs(seconds) < kFarthestSeconds ? base::rowSeconds(base::timestampOfRow(seconds))
                                                 : seconds;
}

/// The double that a case has for the same point in time.
double hostSecondsOf(double rowSeconds)
{
    return std::fabs(rowSeconds) < kFarthestSeconds
               ? base::hostSeconds(base::timestampOfRow(rowSeconds, 0))
               : rowSeconds + base::kHostEpoch;
}

} // namespace

double GetBaseDateNumber()
{
    return base::kHostEpoch;
}

double NumericStorageStatToCF(double value, CFField::StorageType storage)
{
    // The highest number means no limit and is not converted.
    if (value == kSystemMissing || value == std::numeric_limits<double>::max())
        return value;
    if (storage == CFField::Date)
        return (value - base::kHostEpoch) / base::kSecondsPerDay;
    return storage == CFField::Timestamp ? rowSecondsOf(value) : value;
}

double NumericStorageCFToStat(double value, CFField::StorageType storage)
{
    // The highest number means no limit and is not converted.
    if (value == kSystemMissing || value == std::numeric_limits<double>::max())
        return value;
    if (storage == CFField::Date)
        return value * base::kSecondsPerDay + base::kHostEpoch;
    return storage == CFField::Timestamp ? hostSecondsOf(value) : value;
}

CFFormat* GetCFFieldFormat(const VEXA_Variable& variable)
{
    const VEXA_Format& format = variable.GetFormat();
    if (format.type == 0)
        return nullptr;
    return std::make_unique<CFFormat>(format.type, format.width, format.decimals).release();
}
