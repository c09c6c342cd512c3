#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Times as numbers and as ISO 8601 texts, in the Gregorian calendar without leap seconds.
namespace base {

inline constexpr double kSecondsPerDay = 86400;
inline constexpr std::int64_t kMicrosecondsPerSecond = 1'000'000;
inline constexpr std::int64_t kMicrosecondsPerMinute = 60 * kMicrosecondsPerSecond;
inline constexpr std::int64_t kMicrosecondsPerHour = 60 * kMicrosecondsPerMinute;
inline constexpr std::int64_t kMicrosecondsPerDay = 24 * kMicrosecondsPerHour;

/// The origin of the host's dates and of dates in models. Rows and data files count from
/// 1970-01-01.
inline constexpr std::chrono::sys_days kHostOrigin{std::chrono::year(1582) / 10 / 14};
/// The seconds from kHostOrigin to 1970-01-01.
inline constexpr double kHostEpoch = -kHostOrigin.time_since_epoch().count() * kSecondsPerDay;

/// The quotient, rounded down. `by` must be positive.
constexpr std::int64_t floorDivided(std::int64_t value, std::int64_t by)
{
    return value / by - (value % by < 0 ? 1 : 0);
}
/// The remainder of floorDivided; never negative. Does not overflow, also for the least value.
constexpr std::int64_t floorRest(std::int64_t value, std::int64_t by)
{
    const std::int64_t rest = value % by;
    return rest < 0 ? rest + by : rest;
}

/// Rounds seconds to microseconds. A fraction that rounds up to a full second is dropped: carrying
/// it over could change the day. `seconds` must not be negative, and below 9e12.
std::int64_t microsecondsOf(double seconds);

/// A day, counted from 1970-01-01, for example "2024-01-31". Years before 0 have a sign, and years
/// after 9999 more digits. `day` must be within 1e15 of 1970.
std::string isoDate(std::int64_t day);

/// How many decimals a second has in a text.
enum class Decimals
{
    Needed, ///< without trailing zeros; none for a whole second
    Six
};

/// A number of microseconds as hours, minutes and seconds, for example "10:30:00.25". The number of
/// hours may exceed 23. `microseconds` must not be negative.
std::string isoClock(std::int64_t microseconds, Decimals decimals = Decimals::Needed);

/// The day of a text of the form "2024-01-31", in the years 0 to 9999. Empty for any other text.
std::optional<std::chrono::sys_days> dayOfIso(std::string_view text);

/// The microseconds of a text of the form "10:30:00", with or without a fraction of one to six
/// digits. Empty for any other text and for a time after 23:59:59.999999.
std::optional<std::int64_t> clockOfIso(std::string_view text);

} // namespace base
