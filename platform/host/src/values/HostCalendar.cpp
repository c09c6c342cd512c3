#include "values/HostCalendar.h"

#include <cmath>
#include <cstddef>

#include "base/CivilTime.h"

using namespace std::chrono;

namespace {

constexpr sys_days kEarliest{year{1} / January / 1};
constexpr sys_days kLatest{year{9999} / December / 31};

constexpr int kFirstShortYear = 1940;
constexpr int kYearsPerCentury = 100;
constexpr std::size_t kShortName = 3;

template <std::size_t Count>
std::optional<int> placeOfName(const std::array<std::string_view, Count>& names,
                               std::string_view upper)
{
    for (std::size_t i = 0; i < Count && upper.size() >= kShortName; ++i)
        if (names[i].starts_with(upper))
            return static_cast<int>(i) + 1;
    return std::nullopt;
}

} // namespace

std::optional<sys_days> dayOfSeconds(double seconds)
{
    const double count = std::floor(seconds / base::kSecondsPerDay);
    if (!(count >= (kEarliest - base::kHostOrigin).count() &&
          count <= (kLatest - base::kHostOrigin).count()))
        return std::nullopt;
    return base::kHostOrigin + days{static_cast<int>(count)};
}

double secondsOfDay(sys_days day)
{
    return static_cast<double>((day - base::kHostOrigin).count()) * base::kSecondsPerDay;
}

sys_days firstOfYear(int number)
{
    return year{number} / January / 1;
}

int dayOfYear(sys_days day)
{
    const int number = static_cast<int>(year_month_day(day).year());
    return static_cast<int>((day - firstOfYear(number)).count()) + 1;
}

bool hasShortYear(int year)
{
    return year >= kFirstShortYear && year < kFirstShortYear + kYearsPerCentury;
}

int yearOfShort(int digits)
{
    const int century = kFirstShortYear - kFirstShortYear % kYearsPerCentury;
    const int year = century + digits;
    return hasShortYear(year) ? year : year + kYearsPerCentury;
}

std::optional<int> monthOfName(std::string_view upper)
{
    return placeOfName(kMonthNames, upper);
}

std::optional<int> weekdayOfName(std::string_view upper)
{
    return placeOfName(kWeekdayNames, upper);
}
