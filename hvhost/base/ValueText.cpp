#include "hvhost/base/ValueText.h"

#include <cmath>
#include <cstdint>

#include "base/CivilTime.h"
#include "base/NumberText.h"
#include "base/TimestampScale.h"

namespace {

/// Beyond this there are no valid dates or times, only the database's infinities and unsuitable
/// numbers.
constexpr double kFarthest = 1e12;
constexpr double kFarthestTimestamp = 9.2e12;

bool isInReach(double number)
{
    return std::abs(number) < kFarthest;
}

std::string dateText(double days)
{
    if (!isInReach(days))
        return base::shortestNumber(days);
    return base::isoDate(static_cast<std::int64_t>(std::floor(days)));
}

std::string timeText(double seconds)
{
    if (!isInReach(seconds))
        return base::shortestNumber(seconds);
    return (seconds < 0 ? "-" : "") + base::isoClock(base::microsecondsOf(std::abs(seconds)));
}

std::string timestampText(double seconds)
{
    if (!(std::abs(seconds) < kFarthestTimestamp))
        return base::shortestNumber(seconds);
    const std::int64_t moment = base::timestampOfRow(seconds, 0);
    return base::isoDate(base::floorDivided(moment, base::kMicrosecondsPerDay)) + " " +
           base::isoClock(base::floorRest(moment, base::kMicrosecondsPerDay));
}

} // namespace

bool isNumber(CFField::StorageType storage)
{
    return storage == CFField::Integer || storage == CFField::Real;
}

std::string numberText(double number, CFField::StorageType storage)
{
    switch (storage) {
    case CFField::Date:
        return dateText(number);
    case CFField::Time:
        return timeText(number);
    case CFField::Timestamp:
        return timestampText(number);
    default:
        return base::shortestNumber(number);
    }
}
