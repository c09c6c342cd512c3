#include "components/descriptives/summary/CalendarEdges.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <iterator>

#include "base/CivilTime.h"

namespace EmbeddedHV {
namespace {

using std::chrono::sys_days;

constexpr int kMonday = 4; ///< the first Monday, in days since 1970-01-01
constexpr int kWeek = 7;
constexpr int kMonthsOfYear = 12;

/// A number of months, and the days of the shortest such period.
struct Period
{
    int months;
    double days;
};
constexpr Period kPeriods[] = {{1, 28},
                               {2, 59},
                               {3, 89},
                               {6, 181},
                               {kMonthsOfYear, 365},
                               {2 * kMonthsOfYear, 730},
                               {5 * kMonthsOfYear, 1825},
                               {10 * kMonthsOfYear, 3651},
                               {20 * kMonthsOfYear, 7303},
                               {50 * kMonthsOfYear, 18260},
                               {100 * kMonthsOfYear, 36523},
                               {200 * kMonthsOfYear, 73047},
                               {500 * kMonthsOfYear, 182620}};

/// Days since 1970-01-01 of the first day of a month, which is counted from year 0.
double dayOfMonth(int month)
{
    const auto year = std::chrono::year(month / kMonthsOfYear);
    const auto first = std::chrono::month(static_cast<unsigned>(month % kMonthsOfYear + 1));
    return static_cast<double>(sys_days(year / first / 1).time_since_epoch().count());
}

std::vector<double> weekEdges(double first, double last)
{
    double day = std::floor((first - kMonday) / kWeek) * kWeek + kMonday;
    std::vector<double> edges = {day * base::kSecondsPerDay};
    while (day <= last)
        edges.push_back((day += kWeek) * base::kSecondsPerDay);
    return edges;
}

std::vector<double> monthEdges(double first, double last, int months)
{
    const std::chrono::year_month_day date{sys_days(std::chrono::days(static_cast<int>(first)))};
    int month = static_cast<int>(date.year()) * kMonthsOfYear +
                static_cast<int>(static_cast<unsigned>(date.month())) - 1;
    month -= month % months;
    std::vector<double> edges = {dayOfMonth(month) * base::kSecondsPerDay};
    while (edges.back() <= last * base::kSecondsPerDay)
        edges.push_back(dayOfMonth(month += months) * base::kSecondsPerDay);
    return edges;
}

} // namespace

std::optional<std::vector<double>> calendarEdges(double minimum, double maximum, double width)
{
    constexpr double kFirstDay = -719162; // 0001-01-01
    constexpr double kLastDay = 2932896;  // 9999-12-31
    const double days = width / base::kSecondsPerDay;
    const double first = std::floor(minimum / base::kSecondsPerDay);
    const double last = maximum / base::kSecondsPerDay;
    if (days <= 1 || first < kFirstDay || last > kLastDay)
        return std::nullopt;
    if (days <= kWeek)
        return weekEdges(first, last);
    const auto* period = std::find_if(std::begin(kPeriods), std::end(kPeriods),
                                      [days](const Period& each) { return each.days >= days; });
    if (period == std::end(kPeriods))
        return std::nullopt;
    std::vector<double> edges = monthEdges(first, last, period->months);
    const bool isWritable = edges.front() >= kFirstDay * base::kSecondsPerDay &&
                            edges.back() <= kLastDay * base::kSecondsPerDay;
    return isWritable ? std::optional(std::move(edges)) : std::nullopt;
}

} // namespace EmbeddedHV
