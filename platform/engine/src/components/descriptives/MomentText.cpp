#include "components/descriptives/MomentText.h"

#include <cmath>
#include <cstdint>

#include "base/CivilTime.h"

namespace EmbeddedHV {
namespace {

/// Seconds from 1970-01-01 to 0001-01-01 and to 10000-01-01.
constexpr double kFirst = -62135596800;
constexpr double kEnd = 253402300800;

} // namespace

std::optional<std::string> dateText(double seconds)
{
    if (!(seconds >= kFirst && seconds < kEnd))
        return std::nullopt;
    return base::isoDate(static_cast<std::int64_t>(std::floor(seconds / base::kSecondsPerDay)));
}

std::string timeText(double seconds)
{
    const double day = std::floor(seconds / base::kSecondsPerDay) * base::kSecondsPerDay;
    return base::isoClock(base::microsecondsOf(seconds - day));
}

std::optional<std::string> timestampText(double seconds)
{
    const auto date = dateText(seconds);
    return date ? std::optional(*date + "T" + timeText(seconds) + "Z") : std::nullopt;
}

} // namespace EmbeddedHV
