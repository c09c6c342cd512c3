#include "components/temporal/preparation/IntervalDetection.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "ErrorIds.h"
#include "JobError.h"
#include "components/descriptives/TimeInterval.h"
#include "components/result/ValueFormat.h"
#include "datafile/SqlQuoting.h"
#include "duckdb/NewTable.h"

namespace EmbeddedHV {
namespace {

/// So many weeks must pass before a weekday without a point is one that never has one.
constexpr std::int64_t kDaysForWeekdays = 28;
constexpr std::int64_t kDaysForHours = 5;
constexpr std::int64_t kMomentsInHour = base::kMicrosecondsPerHour;

TimeInterval intervalOfMoments(JobContext& context, const std::string& component,
                               const std::vector<Moment>& moments)
{
    const CFField point("point", CFField::Ordinal, CFField::Timestamp);
    NewTable table(context, component, {point});
    for (const Moment moment : moments) {
        table.addTimestamp(moment);
        table.endRecord();
    }
    const std::string source = quotedIdentifier(table.finish()->table);
    DescriptivesSettings settings;
    settings.points = {{point}};
    const InputTable points(context.newTable("hv_points_"), settings);
    const ComponentQueries queries(context, component);
    queries.run(points.creation("SELECT * FROM " + source));
    return detectInterval(queries, points, {point});
}

std::int64_t daysBetween(const std::vector<Moment>& moments)
{
    return dayOf(moments.back()) - dayOf(moments.front()) + 1;
}

/// Whether at least half of the intervals that count have a moment.
bool areMostlyFilled(const IntervalSpec& spec, const std::vector<Moment>& moments)
{
    const TimeCalendar calendar(spec, moments.front());
    const auto last = calendar.indexOf(moments.back());
    return last && 2 * static_cast<std::int64_t>(moments.size()) > *last;
}

void leaveOutWeekdays(IntervalSpec& spec, const std::vector<Moment>& moments)
{
    if (daysBetween(moments) < kDaysForWeekdays ||
        (spec.unit == TimeUnit::Day && spec.increment > 1))
        return;
    IntervalSpec found = spec;
    found.workingDays = 0;
    for (const Moment moment : moments)
        found.workingDays |= 1U << (weekdayOf(dayOf(moment)) - 1);
    if (std::popcount(found.workingDays) > 1 && areMostlyFilled(found, moments))
        spec = found;
}

void leaveOutHours(IntervalSpec& spec, const std::vector<Moment>& moments)
{
    const std::int64_t step = momentsOf(spec.unit) * spec.increment;
    if (spec.unit <= TimeUnit::Day || daysBetween(moments) < kDaysForHours ||
        kMomentsOfDay % step != 0)
        return;
    Moment least = kMomentsOfDay;
    Moment most = 0;
    for (const Moment moment : moments) {
        least = std::min(least, timeOfDay(moment));
        most = std::max(most, timeOfDay(moment));
    }
    IntervalSpec found = spec;
    found.fromHour = static_cast<int>(least / kMomentsInHour);
    found.toHour =
        static_cast<int>(std::min<Moment>((most + step + kMomentsInHour - 1) / kMomentsInHour, 24));
    if (found.hasWorkingHours() && (least - found.fromHour * kMomentsInHour) % step == 0 &&
        areMostlyFilled(found, moments))
        spec = found;
}

bool areAllPoints(const TimeCalendar& calendar, const std::vector<Moment>& moments)
{
    return std::all_of(moments.begin(), moments.end(), [&](Moment moment) {
        const auto index = calendar.indexOf(moment);
        return index && calendar.pointAt(*index) == moment;
    });
}

/// The latest day of the month on which one of the moments lies.
int latestDayOfMonth(const std::vector<Moment>& moments)
{
    int latest = 0;
    for (const Moment moment : moments)
        latest = std::max(latest, civilDateOf(dayOf(moment)).day);
    return latest;
}

/// The last point on that day of the month that is not after the moment.
Moment pointOnDayOfMonth(int day, Moment moment)
{
    const std::int64_t month = monthNumber(civilDateOf(dayOf(moment)));
    const Moment point = dayOf(dateInMonth(month, day)) * kMomentsOfDay;
    return point <= moment ? point : dayOf(dateInMonth(month - 1, day)) * kMomentsOfDay;
}

} // namespace

IntervalSpec withWorkingTime(IntervalSpec spec, const std::vector<Moment>& moments)
{
    if (spec.unit < TimeUnit::Day)
        return spec;
    leaveOutHours(spec, moments);
    leaveOutWeekdays(spec, moments);
    return spec;
}

IntervalSpec detectSpec(JobContext& context, const std::string& component,
                        const std::vector<Moment>& moments)
{
    const TimeInterval found = intervalOfMoments(context, component, moments);
    if (!found.unit)
        throw JobError(errors::kTsdpFewPoints,
                       {.step = component,
                        .what = "the data have fewer than two points of time, which make no "
                                "series"});
    IntervalSpec spec;
    spec.unit = *found.unit;
    spec.increment = std::llround(found.increment);
    if (static_cast<double>(spec.increment) != found.increment)
        throw JobError(errors::kTsdpInterval,
                       {.step = component,
                        .what = "the points of time are multiples of " +
                                numberJson(found.increment).dump() +
                                " seconds apart, and an interval is a whole number of seconds: set "
                                "\"timeInterval\" to the interval that is wanted"});
    return withWorkingTime(spec, moments);
}

std::optional<Moment> firstPoint(IntervalSpec& spec, const std::vector<Moment>& moments)
{
    const auto first = std::find_if(moments.begin(), moments.end(),
                                    [&](Moment moment) { return counts(spec, moment); });
    if (first == moments.end())
        return std::nullopt;
    IntervalSpec byDay = spec;
    if (monthsOf(spec.unit) != 0 && spec.dayOfMonth == 0)
        byDay.dayOfMonth = latestDayOfMonth(moments);
    if (areAllPoints(TimeCalendar(byDay, *first), moments)) {
        spec = byDay;
        return *first;
    }
    if (spec.dayOfMonth != 0)
        return pointOnDayOfMonth(spec.dayOfMonth, *first);
    // Parts of working days begin with the day.
    if (spec.unit > TimeUnit::Day && (spec.hasWorkingDays() || spec.hasWorkingHours()))
        return TimeCalendar(spec, *first).pointAt(0);
    return beginningOf(spec, *first);
}

} // namespace EmbeddedHV
