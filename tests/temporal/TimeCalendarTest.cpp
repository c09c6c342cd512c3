#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "components/temporal/preparation/CellValues.h"
#include "components/temporal/preparation/GapFilling.h"
#include "components/temporal/preparation/IntervalDetection.h"
#include "components/temporal/preparation/PeriodClock.h"
#include "components/temporal/preparation/TimeCalendar.h"

using namespace EmbeddedHV;

namespace {

constexpr auto kMissing = std::numeric_limits<double>::quiet_NaN();

Moment at(const std::string& text)
{
    const auto moment = momentOfText(text);
    EXPECT_TRUE(moment) << text;
    return moment.value_or(0);
}

std::string textOf(std::optional<Moment> moment)
{
    return moment ? momentText(*moment, CFField::Timestamp) : "none";
}

IntervalSpec every(std::int64_t increment, TimeUnit unit)
{
    IntervalSpec spec;
    spec.unit = unit;
    spec.increment = increment;
    return spec;
}

IntervalSpec working(IntervalSpec spec, unsigned days, int from = 0, int to = 24)
{
    spec.workingDays = days;
    spec.fromHour = from;
    spec.toHour = to;
    return spec;
}

constexpr unsigned kMondayToFriday = 0x1f;

struct PointCase
{
    IntervalSpec spec;
    std::string start;
    std::int64_t index;
    std::string point;
    std::string last; ///< a moment in the interval, up to its end
};

TEST(TimeCalendar, NumbersIntervalsInBothDirections)
{
    const IntervalSpec years = every(1, TimeUnit::Year);
    const IntervalSpec months = every(1, TimeUnit::Month);
    IntervalSpec onThe30th = months;
    onThe30th.dayOfMonth = 30;
    const IntervalSpec days = every(1, TimeUnit::Day);
    const IntervalSpec weekdays = working(days, kMondayToFriday);
    const IntervalSpec shifts = working(every(1, TimeUnit::Hour), kMondayToFriday, 9, 17);
    const IntervalSpec uneven = working(every(3, TimeUnit::Hour), IntervalSpec::kEveryDay, 9, 17);
    const IntervalSpec onWeekdays = working(every(12, TimeUnit::Hour), kMondayToFriday);
    const PointCase cases[] = {
        // Years, from a leap day too.
        {years, "2020-01-01", 3, "2023-01-01 00:00:00", "2023-12-31 23:59:59.999999"},
        {years, "2020-02-29", 1, "2021-02-28 00:00:00", "2022-02-27 23:59:59"},
        {years, "2020-02-29", 4, "2024-02-29 00:00:00", "2025-02-27 00:00:00"},
        {years, "2020-02-29", -1, "2019-02-28 00:00:00", "2020-02-28 23:59:59"},
        {every(5, TimeUnit::Year), "2000-07-01", 2, "2010-07-01 00:00:00", "2015-06-30"},
        // Quarters and months with their ends.
        {every(1, TimeUnit::Quarter), "2023-11-30", 1, "2024-02-29 00:00:00", "2024-05-29"},
        {every(2, TimeUnit::Quarter), "2023-01-01", 3, "2024-07-01 00:00:00", "2024-12-31"},
        {months, "2024-01-31", 1, "2024-02-29 00:00:00", "2024-03-30 23:59:59"},
        {months, "2024-01-31", 3, "2024-04-30 00:00:00", "2024-05-30"},
        {months, "2023-01-31", 1, "2023-02-28 00:00:00", "2023-03-30"},
        {onThe30th, "2023-02-28", 1, "2023-03-30 00:00:00", "2023-04-29"},
        {onThe30th, "2023-02-28", 12, "2024-02-29 00:00:00", "2024-03-29"},
        {onThe30th, "2023-02-28", -1, "2023-01-30 00:00:00", "2023-02-27"},
        {months, "2023-12-15 06:30:00", 1, "2024-01-15 06:30:00", "2024-02-15 06:29:59"},
        {every(7, TimeUnit::Month), "2023-12-01", -2, "2022-10-01 00:00:00", "2023-04-30"},
        // Weeks, over a week 53 and the end of a year.
        {every(1, TimeUnit::Week), "2020-12-21", 1, "2020-12-28 00:00:00", "2021-01-03"},
        {every(1, TimeUnit::Week), "2020-12-21", 2, "2021-01-04 00:00:00", "2021-01-10"},
        {every(2, TimeUnit::Week), "2024-01-03", -1, "2023-12-20 00:00:00", "2024-01-02"},
        // Days, over a leap day, and over nights in which clocks change elsewhere.
        {days, "2024-02-28", 2, "2024-03-01 00:00:00", "2024-03-01 23:59:59"},
        {days, "2024-03-30", 2, "2024-04-01 00:00:00", "2024-04-01 23:00:00"},
        {every(10, TimeUnit::Day), "2024-02-25", 1, "2024-03-06 00:00:00", "2024-03-15"},
        // Working days: 2024-01-05 is a Friday.
        {weekdays, "2024-01-05", 1, "2024-01-08 00:00:00", "2024-01-08 23:59:59"},
        {weekdays, "2024-01-05", 6, "2024-01-15 00:00:00", "2024-01-15"},
        {weekdays, "2024-01-05", -5, "2023-12-29 00:00:00", "2023-12-29 12:00:00"},
        {weekdays, "2024-01-05 17:30:00", 1, "2024-01-08 17:30:00", "2024-01-09 17:29:59"},
        {working(every(2, TimeUnit::Day), kMondayToFriday), "2024-01-05", 2, "2024-01-11 00:00:00",
         "2024-01-12"},
        {working(days, 0x15), "2024-01-05", 1, "2024-01-08 00:00:00", "2024-01-08"},
        // Hours, minutes and seconds: a day of a clock change has 24 hours.
        {every(1, TimeUnit::Hour), "2024-03-31 00:00:00", 24, "2024-04-01 00:00:00",
         "2024-04-01 00:59:59"},
        {every(5, TimeUnit::Hour), "2024-01-01", 5, "2024-01-02 01:00:00", "2024-01-02 05:59:59"},
        {every(15, TimeUnit::Minute), "2024-02-28 23:45:00", 97, "2024-03-01 00:00:00",
         "2024-03-01 00:14:59"},
        {every(30, TimeUnit::Second), "2023-12-31 23:59:30", 1, "2024-01-01 00:00:00",
         "2024-01-01 00:00:29.999999"},
        // Working hours: eight a day.
        {shifts, "2024-01-05 16:00:00", 1, "2024-01-08 09:00:00", "2024-01-08 09:59:59"},
        {shifts, "2024-01-05 09:00:00", 40, "2024-01-12 09:00:00", "2024-01-12 09:30:00"},
        {shifts, "2024-01-08 09:00:00", -1, "2024-01-05 16:00:00", "2024-01-05 16:59:59"},
        {uneven, "2024-01-05 09:00:00", 2, "2024-01-05 15:00:00", "2024-01-05 16:59:59"},
        {uneven, "2024-01-05 09:00:00", 3, "2024-01-06 09:00:00", "2024-01-06 11:59:59"},
        {onWeekdays, "2024-01-05 12:00:00", 1, "2024-01-08 00:00:00", "2024-01-08 11:59:59"},
    };
    for (const PointCase& point : cases) {
        const TimeCalendar calendar(point.spec, at(point.start));
        const std::string label =
            point.start + " + " + std::to_string(point.index) + " " + wordOf(point.spec.unit);
        EXPECT_EQ(textOf(calendar.pointAt(point.index)), point.point) << label;
        EXPECT_EQ(calendar.indexOf(at(point.point)), point.index) << label;
        EXPECT_EQ(calendar.indexOf(at(point.last)), point.index) << label;
        EXPECT_NE(calendar.indexOf(at(point.point) - 1), point.index) << label;
    }
}

TEST(TimeCalendar, KnowsWhatCountsAndWhereTimeEnds)
{
    const TimeCalendar shifts(working(every(1, TimeUnit::Hour), kMondayToFriday, 9, 17),
                              at("2024-01-05 09:00:00"));
    for (const char* moment : {"2024-01-05 08:59:59", "2024-01-05 17:00:00", "2024-01-06 10:00:00"})
        EXPECT_EQ(shifts.indexOf(at(moment)), std::nullopt) << moment;
    const TimeCalendar years(every(1, TimeUnit::Year), at("9998-01-01"));
    EXPECT_EQ(textOf(years.pointAt(1)), "9999-01-01 00:00:00");
    EXPECT_EQ(textOf(years.pointAt(-9997)), "0001-01-01 00:00:00");
    for (const std::int64_t index : {std::int64_t{2}, std::int64_t{-9998}, INT64_MAX, INT64_MIN})
        for (const IntervalSpec& spec : {every(1, TimeUnit::Year), every(10000000, TimeUnit::Week),
                                         working(every(10000000, TimeUnit::Day), 1)})
            EXPECT_EQ(TimeCalendar(spec, at("9998-01-05")).pointAt(index), std::nullopt) << index;
}

/// Every interval begins where the one before it ends, whatever the calendar.
TEST(TimeCalendar, LeavesNoHoleAndNoOverlap)
{
    for (const TimeUnit unit : {TimeUnit::Year, TimeUnit::Quarter, TimeUnit::Month, TimeUnit::Week,
                                TimeUnit::Day, TimeUnit::Hour, TimeUnit::Minute})
        for (const std::int64_t increment : {1, 3, 7})
            for (const unsigned days : {IntervalSpec::kEveryDay, kMondayToFriday, 0x41U}) {
                IntervalSpec spec = every(increment, unit);
                if (unit >= TimeUnit::Day)
                    spec.workingDays = days;
                if (unit > TimeUnit::Day)
                    spec.toHour = 23;
                const TimeCalendar calendar(spec, at("2024-01-29"));
                Moment before = *calendar.pointAt(-281);
                for (std::int64_t i = -280; i < 280; ++i) {
                    const Moment point = *calendar.pointAt(i);
                    EXPECT_LT(before, point);
                    EXPECT_EQ(calendar.indexOf(point), i);
                    EXPECT_LT(calendar.indexOf(point - 1).value_or(i - 1), i);
                    before = point;
                }
            }
}

struct ClockCase
{
    std::vector<TimeUnit> periods;
    std::vector<std::int64_t> numbers;
    std::string moment; ///< "none" if the numbers name none
};

TEST(PeriodClock, TurnsNumbersIntoMomentsAndBack)
{
    using enum TimeUnit;
    const ClockCase cases[] = {
        {{Year}, {2024}, "2024-01-01 00:00:00"},
        {{Year, Quarter}, {2023, 4}, "2023-10-01 00:00:00"},
        {{Year, Quarter}, {2023, 5}, "none"},
        {{Year, Month}, {2024, 2}, "2024-02-01 00:00:00"},
        {{Year, Month}, {2024, 0}, "none"},
        {{Year, Quarter, Month}, {2024, 2, 4}, "2024-04-01 00:00:00"},
        {{Year, Quarter, Month}, {2024, 2, 7}, "none"},
        {{Year, Month, Day}, {2024, 2, 29}, "2024-02-29 00:00:00"},
        {{Year, Month, Day}, {2023, 2, 29}, "none"},
        {{Year, Day}, {2023, 365}, "2023-12-31 00:00:00"},
        {{Year, Day}, {2023, 366}, "none"},
        {{Year, Day}, {2024, 366}, "2024-12-31 00:00:00"},
        {{Year, Quarter, Day}, {2024, 1, 91}, "2024-03-31 00:00:00"},
        // Week 53 of 2020 ends in 2021; 2021 has 52 weeks, and its first day is in none of its
        // weeks.
        {{Year, Week}, {2020, 53}, "2020-12-28 00:00:00"},
        {{Year, Week, Day}, {2020, 53, 7}, "2021-01-03 00:00:00"},
        {{Year, Week}, {2021, 53}, "none"},
        {{Year, Week}, {2021, 1}, "2021-01-04 00:00:00"},
        {{Year, Week}, {2026, 1}, "2025-12-29 00:00:00"},
        {{Year, Month, Day, Hour, Minute, Second},
         {1999, 12, 31, 23, 59, 59},
         "1999-12-31 23:59:59"},
        {{Year, Month, Day, Hour}, {1999, 12, 31, 24}, "none"},
        // Without a year the outermost period counts on.
        {{Month}, {13}, "1971-01-01 00:00:00"},
        {{Quarter, Month}, {5, 1}, "1971-01-01 00:00:00"},
        {{Week, Day}, {54, 1}, "1971-01-04 00:00:00"},
        {{Day, Hour}, {400, 5}, "1971-02-04 05:00:00"},
        {{Hour}, {0}, "1970-01-01 00:00:00"},
        {{Hour}, {-1}, "none"},
        {{Year}, {10000}, "none"},
    };
    for (const ClockCase& time : cases) {
        const PeriodClock clock(time.periods);
        const auto moment = clock.momentOf(time.numbers);
        EXPECT_EQ(textOf(moment), time.moment) << testing::PrintToString(time.numbers);
        EXPECT_TRUE(!moment || clock.numbersOf(*moment) == time.numbers);
    }
}

TEST(CivilTime, ReadsTimesAndNothingElse)
{
    EXPECT_EQ(at("2024-02-29T10:30:05.25"), at("2024-02-29 10:30:05.250000"));
    EXPECT_EQ(momentText(at("0001-01-01"), CFField::Date), "0001-01-01");
    EXPECT_EQ(momentText(at("10:30:05.25"), CFField::Time), "10:30:05.25");
    EXPECT_EQ(momentText(at("1969-12-31 23:59:59.5"), CFField::Timestamp), "1969-12-31 23:59:59.5");
    for (const char* text :
         {"", "2023-02-29", "2024-1-1", "2024-01-01 24:00:00", "10:60:00", "2024-01-01 ",
          "0000-01-01", "2024-01-01 10:00", "tomorrow", "2024-01-01 10:00:00.1234567"})
        EXPECT_EQ(momentOfText(text), std::nullopt) << text;
}

struct StartCase
{
    IntervalSpec spec;
    std::vector<std::string> moments;
    std::string start;
    int dayOfMonth = 0;
};

TEST(IntervalDetection, BeginsAtTheFirstMomentOrAtItsUnit)
{
    const IntervalSpec days = every(1, TimeUnit::Day);
    const IntervalSpec weekdays = working(days, kMondayToFriday);
    const IntervalSpec shifts = working(every(2, TimeUnit::Hour), kMondayToFriday, 9, 17);
    const IntervalSpec months = every(1, TimeUnit::Month);
    const IntervalSpec weeks = every(1, TimeUnit::Week);
    const auto minutes = [](int count) { return every(count, TimeUnit::Minute); };
    const StartCase cases[] = {
        {months, {"2024-01-15", "2024-02-15"}, "2024-01-15 00:00:00", 15},
        {months, {"2023-02-28", "2023-03-30"}, "2023-02-28 00:00:00", 30},
        {months, {"2024-01-15", "2024-01-16"}, "2024-01-01 00:00:00"},
        {every(6, TimeUnit::Month), {"2024-11-15", "2024-11-16"}, "2024-07-01 00:00:00"},
        {every(1, TimeUnit::Quarter), {"2024-05-15", "2024-05-16"}, "2024-04-01 00:00:00"},
        {every(1, TimeUnit::Year), {"2024-05-15", "2024-05-16"}, "2024-01-01 00:00:00"},
        {weeks, {"2024-01-03", "2024-01-10"}, "2024-01-03 00:00:00"},
        {weeks, {"2024-01-03", "2024-01-09"}, "2024-01-01 00:00:00"},
        {days, {"2024-01-03 10:00:00", "2024-01-04 10:00:00"}, "2024-01-03 10:00:00"},
        {days, {"2024-01-03 10:00:00", "2024-01-04 11:00:00"}, "2024-01-03 00:00:00"},
        {minutes(15), {"2024-01-03 10:07:00", "2024-01-03 10:31:00"}, "2024-01-03 10:00:00"},
        {minutes(7), {"2024-01-03 10:07:30", "2024-01-03 10:31:00"}, "2024-01-03 10:07:00"},
        {weekdays, {"2024-01-06", "2024-01-08"}, "2024-01-08 00:00:00"},
        {weekdays, {"2024-01-06"}, "none"},
        {shifts, {"2024-01-05 12:30:00"}, "2024-01-05 11:00:00"},
    };
    for (const StartCase& start : cases) {
        IntervalSpec spec = start.spec;
        std::vector<Moment> moments;
        for (const std::string& moment : start.moments)
            moments.push_back(at(moment));
        EXPECT_EQ(textOf(firstPoint(spec, moments)), start.start) << start.moments[0];
        EXPECT_EQ(spec.dayOfMonth, start.dayOfMonth) << start.moments[0];
    }
}

TEST(IntervalDetection, FindsWorkingTime)
{
    // Five weeks from Monday to Friday, from 9:00 to 16:30.
    std::vector<Moment> moments;
    for (int day = 0; day < 35; ++day)
        for (int half = 18; day % 7 < 5 && half < 34; ++half)
            moments.push_back(at("2024-01-01") + day * kMomentsOfDay + half * (kMomentsOfDay / 48));
    const IntervalSpec found = withWorkingTime(every(30, TimeUnit::Minute), moments);
    EXPECT_EQ(found.workingDays, kMondayToFriday);
    EXPECT_EQ(found.fromHour, 9);
    EXPECT_EQ(found.toHour, 17);
    // Too few points to say that the others are left out on purpose.
    const std::vector<Moment> few = {at("2024-01-01"), at("2024-01-02"), at("2024-03-05")};
    EXPECT_FALSE(withWorkingTime(every(1, TimeUnit::Day), few).hasWorkingDays());
}

struct FillCase
{
    GapFilling filling;
    std::vector<double> filled;
};

TEST(GapFilling, FillsBetweenValuesOnly)
{
    const std::vector<double> values = {kMissing, 1,        kMissing, kMissing, 7,
                                        8,        kMissing, 4,        kMissing};
    const FillCase cases[] = {
        {GapFilling::Linear, {kMissing, 1, 3, 5, 7, 8, 6, 4, kMissing}},
        {GapFilling::Neighbours, {kMissing, 1, 4, 4, 7, 8, 6, 4, kMissing}},
        {GapFilling::Last, {kMissing, 1, 1, 1, 7, 8, 8, 4, kMissing}},
        {GapFilling::None, values},
    };
    const GapCount gaps = countGaps(values);
    EXPECT_EQ(gaps.observed, 4);
    EXPECT_EQ(gaps.missing, 3);
    for (const FillCase& fill : cases) {
        std::vector<double> filled = values;
        fillGaps(filled, fill.filling);
        for (std::size_t i = 0; i < filled.size(); ++i)
            EXPECT_TRUE(filled[i] == fill.filled[i] ||
                        (std::isnan(filled[i]) && std::isnan(fill.filled[i])))
                << i << ": " << filled[i];
    }
    std::vector<double> huge = {-1.7e308, kMissing, 1.7e308};
    fillGaps(huge, GapFilling::Linear);
    EXPECT_EQ(huge[1], 0);
    std::vector<double> none(3, kMissing);
    fillGaps(none, GapFilling::Linear);
    EXPECT_EQ(countGaps(none).observed, 0);
}

struct AggregationCase
{
    Aggregation aggregation;
    std::vector<double> values;
    double result;
};

TEST(CellValues, AggregatesInAnyOrder)
{
    const AggregationCase cases[] = {
        {Aggregation::Sum, {1, 2, 4}, 7},
        {Aggregation::Sum, {0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7}, 2.8},
        {Aggregation::Sum, {1e300, 1, -1e300}, 1},
        {Aggregation::Sum, {1e300, 1, 1e-300, -1e300, -1}, 1e-300},
        {Aggregation::Sum, {1.7e308, 1.7e308}, kMissing},
        {Aggregation::Sum, {1.7e308, 1.7e308, -1.7e308, 0.1}, 1.7e308},
        {Aggregation::Mean, {1, 2, 4.5}, 2.5},
        {Aggregation::Mean, {1e308, 1.5e308, 1.7e308}, 1.4e308},
        {Aggregation::Mean, {1e-300, 3e-300}, 2e-300},
        {Aggregation::Minimum, {3, -1, 2}, -1},
        {Aggregation::Maximum, {3, -1, 2}, 3},
    };
    for (const AggregationCase& wanted : cases) {
        std::vector<double> values = wanted.values;
        std::sort(values.begin(), values.end());
        do {
            CellValues cells(wanted.aggregation, 2);
            for (const double value : values)
                cells.add(1, value, 0);
            std::int64_t overflows = 0;
            const std::vector<double> result = cells.finish(overflows);
            EXPECT_TRUE(std::isnan(result[0]));
            if (std::isnan(wanted.result)) {
                EXPECT_TRUE(std::isnan(result[1]));
                EXPECT_EQ(overflows, 1);
            } else {
                EXPECT_EQ(result[1], wanted.result) << testing::PrintToString(values);
            }
        } while (std::next_permutation(values.begin(), values.end()));
    }
}

TEST(ExactSum, RoundsToTheNearest)
{
    // Half a unit of the last place, alone and with something behind it.
    const std::pair<std::vector<double>, long double> cases[] = {
        {{}, 0},
        {{1, 0x1p-64}, 1},
        {{1, 0x1p-64, 0x1p-200}, 1 + 0x1p-63L},
        {{1, 0x1p-64, -0x1p-200}, 1},
        {{1, 0x1p-63, 0x1p-64, -0x1p-1074}, 1 + 0x1p-63L},
        {{0x1p1023, 0x1p1023, -0x1p-1074}, 0x1p1024L},
    };
    for (const auto& [values, rounded] : cases) {
        ExactSum sum;
        for (const double value : values)
            sum.add(value);
        EXPECT_EQ(sum.rounded(), rounded) << testing::PrintToString(values);
    }
}

} // namespace
