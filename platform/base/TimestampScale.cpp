#include "base/TimestampScale.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace base {
namespace {

constexpr std::int64_t kMicroseconds = kMicrosecondsPerSecond;
constexpr std::int64_t kStart1900 = -2208988800 * kMicroseconds;
constexpr std::int64_t kStart3700 = 54593568000 * kMicroseconds;
/// Within the database's range of timestamps, with a margin for rounding.
constexpr std::int64_t kFarthest = 9200000000000000000;
/// Maximum distance of a host's double from its timestamp, in steps of such doubles: half a step is
/// lost by the host's rounding, and up to a quarter if it came from a row's double.
constexpr double kReach = 0.75;

/// The distance between doubles near this value.
double stepAt(double value)
{
    return std::scalbn(std::numeric_limits<double>::epsilon(), std::ilogb(value));
}

/// Adds the whole seconds to the origin first. That sum is exact, so the result is rounded once.
double secondsSince(double origin, std::int64_t microseconds)
{
    const std::int64_t whole = floorDivided(microseconds, kMicroseconds);
    const std::int64_t rest = floorRest(microseconds, kMicroseconds);
    return origin + static_cast<double>(whole) +
           static_cast<double>(rest) / static_cast<double>(kMicroseconds);
}

/// The microseconds of a fraction of a second from a host's double with this step.
std::int64_t roundestMicroseconds(double fraction, double step)
{
    const double exact = fraction * static_cast<double>(kMicroseconds);
    const double microStep = step * static_cast<double>(kMicroseconds);
    double grain = 10;
    while (grain < microStep)
        grain *= 10;
    // Choose the nearer of two multiples of the grain.
    const double reach = std::min(kReach * microStep, grain / 2);
    const double roundest = std::round(exact / grain) * grain;
    return std::llround(std::fabs(roundest - exact) <= reach ? roundest : exact);
}

} // namespace

double hostSeconds(std::int64_t microseconds)
{
    return secondsSince(kHostEpoch, microseconds);
}

double rowSeconds(std::int64_t microseconds)
{
    return secondsSince(0, microseconds);
}

std::int64_t timestampOfRow(double seconds, double epoch)
{
    // Handle whole seconds and fraction separately: one product would lose the last digits.
    const double whole = std::floor(seconds);
    const double fraction = seconds - whole;
    const std::int64_t rounded = static_cast<std::int64_t>(whole) * kMicroseconds;
    if (fraction == 0)
        return rounded;
    const double step = std::max(stepAt(seconds), stepAt(seconds + epoch));
    // A double that the host cannot produce does not come from it: round to the nearest
    // microsecond.
    const double steps = fraction / step;
    const bool isOfHost = steps == std::floor(steps);
    return rounded + (isOfHost ? roundestMicroseconds(fraction, step)
                               : std::llround(fraction * static_cast<double>(kMicroseconds)));
}

bool survivesHost(std::int64_t microseconds)
{
    // Almost all timestamps are multiples of 10 microseconds between 1900 and 3700.
    if (microseconds % 10 == 0 && microseconds >= kStart1900 && microseconds < kStart3700)
        return true;
    // The database's infinities are not converted.
    if (microseconds > kFarthest || microseconds < -kFarthest)
        return true;
    return timestampOfRow(hostSeconds(microseconds) - kHostEpoch) == microseconds;
}

} // namespace base
