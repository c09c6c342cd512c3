#include "HostConversions.h"

#include <cmath>
#include <limits>
#include <memory>

#include "CFFormat.h"

#include "VexaCases.h"
#include "datafile/TimestampScale.h"

namespace {

constexpr double kDayLength = 86400;
constexpr double kBaseDate = datafile::kHostEpoch;
/// Numbers beyond this limit are not points in time, for example limits of ranges.
constexpr double kFarthestSeconds = 1e12;

/// Converts to the scale of rows and data models, without the digits that the host's scale adds.
double rowSecondsOf(double hostSeconds)
{
    const double seconds = hostSeconds - kBaseDate;
    return std::fabs(seconds) < kFarthestSeconds
               ? datafile::rowSeconds(datafile::timestampOfRow(seconds))
               : seconds;
}

/// The double that a case has for the same point in time.
double hostSecondsOf(double rowSeconds)
{
    return std::fabs(rowSeconds) < kFarthestSeconds
               ? datafile::hostSeconds(datafile::timestampOfRow(rowSeconds, 0))
               : rowSeconds + kBaseDate;
}

} // namespace

double GetBaseDateNumber()
{
    return kBaseDate;
}

double NumericStorageStatToCF(double value, CFField::StorageType storage)
{
    // The highest number means no limit and is not converted.
    if (value == kSystemMissing || value == std::numeric_limits<double>::max())
        return value;
    if (storage == CFField::Date)
        return (value - kBaseDate) / kDayLength;
    return storage == CFField::Timestamp ? rowSecondsOf(value) : value;
}

double NumericStorageCFToStat(double value, CFField::StorageType storage)
{
    // The highest number means no limit and is not converted.
    if (value == kSystemMissing || value == std::numeric_limits<double>::max())
        return value;
    if (storage == CFField::Date)
        return value * kDayLength + kBaseDate;
    return storage == CFField::Timestamp ? hostSecondsOf(value) : value;
}

CFFormat* GetCFFieldFormat(const VEXA_Variable& variable)
{
    const VEXA_Format& format = variable.GetFormat();
    if (format.type == 0)
        return nullptr;
    return std::make_unique<CFFormat>(format.type, format.width, format.decimals).release();
}
