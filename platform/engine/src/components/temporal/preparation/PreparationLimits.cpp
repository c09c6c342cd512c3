#include "components/temporal/preparation/PreparationLimits.h"

#include "ErrorIds.h"
#include "JobError.h"

namespace EmbeddedHV {
namespace {

[[noreturn]] void refuseSize(const std::string& component, const std::string& what,
                             std::int64_t most, const std::string& advice)
{
    throw JobError(errors::kTsdpTooLarge, {.step = component,
                                           .limit = most,
                                           .what = "the data have " + what + ", more than " +
                                                   std::to_string(most) + ": " + advice});
}

} // namespace

void checkPointCount(const std::string& component, std::int64_t points)
{
    if (points > kMostTimePoints)
        refuseSize(component, std::to_string(points) + " points of time", kMostTimePoints,
                   "set \"timeInterval\" to a longer interval");
}

void checkTimeCount(const std::string& component, std::int64_t times)
{
    if (times > kMostTimes)
        refuseSize(component, std::to_string(times) + " different times or more", kMostTimes,
                   "round them to the interval that is wanted first");
}

void checkSeriesCount(const std::string& component, std::int64_t series)
{
    if (series > kMostSeries)
        refuseSize(component, std::to_string(series) + " series or more", kMostSeries,
                   "name fewer dimensions or metrics");
}

void checkValueCount(const std::string& component, std::int64_t points, std::int64_t series)
{
    if (points * series > kMostSeriesValues)
        refuseSize(component,
                   std::to_string(series) + " series of " + std::to_string(points) +
                       " points of time, that is " + std::to_string(points * series) + " values",
                   kMostSeriesValues,
                   "set \"timeInterval\" to a longer interval, or name fewer dimensions or "
                   "metrics");
}

} // namespace EmbeddedHV
