#include <array>
#include <cmath>

#include "base/CivilTime.h"
#include "functions/FunctionTable.h"
#include "values/Calendar.h"

namespace scoring {
namespace {

using Arguments = std::span<const Cell>;

/// The seconds from the start of a year to a moment. Invalid if the year is invalid.
Cell secondsSinceYear(Arguments arguments)
{
    const double year = arguments[1].number;
    if (year != std::floor(year) || year < 0 || year > kLastYear)
        return Cell::invalid();
    return Cell::of(secondsSince(startOfYear(static_cast<int>(year)), arguments[0].number));
}

Cell dateSecondsSinceYear(Arguments arguments, Scratch&)
{
    return secondsSinceYear(arguments);
}

Cell dateDaysSinceYear(Arguments arguments, Scratch&)
{
    Cell cell = secondsSinceYear(arguments);
    cell.number = std::floor(cell.number / base::kSecondsPerDay);
    return cell;
}

Cell dateSecondsSinceMidnight(Arguments arguments, Scratch&)
{
    const double moment = arguments[0].number;
    const double midnight = std::floor(moment / base::kSecondsPerDay) * base::kSecondsPerDay;
    // A time of day is exact already.
    return Cell::of(midnight == 0 ? moment : secondsSince(midnight, moment));
}

constexpr std::array kDates{
    FunctionEntry{"dateDaysSinceYear", 2, 2, ArgumentRule::SinceYear, ResultRule::Number,
                  MissingRule::Passes, dateDaysSinceYear, nullptr},
    FunctionEntry{"dateSecondsSinceYear", 2, 2, ArgumentRule::SinceYear, ResultRule::Number,
                  MissingRule::Passes, dateSecondsSinceYear, nullptr},
    FunctionEntry{"dateSecondsSinceMidnight", 1, 1, ArgumentRule::MomentOrTime, ResultRule::Number,
                  MissingRule::Passes, dateSecondsSinceMidnight, nullptr},
};

} // namespace

std::span<const FunctionEntry> dateFunctions()
{
    return kDates;
}

} // namespace scoring
