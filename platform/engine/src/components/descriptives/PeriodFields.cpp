#include "components/descriptives/PeriodFields.h"

#include <algorithm>
#include <utility>

#include "datafile/FieldNames.h"

namespace EmbeddedHV {
namespace {

/// Words that name a period. The first word in this list that occurs in a field's name is used.
constexpr std::pair<const char*, TimeUnit> kPeriodWords[] = {
    {"weekday", TimeUnit::Day},   {"dayof", TimeUnit::Day},       {"day_of", TimeUnit::Day},
    {"year", TimeUnit::Year},     {"quarter", TimeUnit::Quarter}, {"month", TimeUnit::Month},
    {"week", TimeUnit::Week},     {"day", TimeUnit::Day},         {"hour", TimeUnit::Hour},
    {"minute", TimeUnit::Minute}, {"second", TimeUnit::Second},
};

/// The range of the numbers of a period.
struct PeriodRange
{
    TimeUnit unit;
    double least;
    double most;
};

/// From the coarsest to the finest. If several periods fit the values of a field, the coarsest is
/// used.
constexpr PeriodRange kRanges[] = {
    {TimeUnit::Year, 1000, 9999}, {TimeUnit::Quarter, 1, 4}, {TimeUnit::Month, 1, 12},
    {TimeUnit::Week, 1, 53},      {TimeUnit::Day, 1, 366},   {TimeUnit::Hour, 0, 23},
    {TimeUnit::Minute, 0, 59},    {TimeUnit::Second, 0, 59},
};

std::optional<TimeUnit> periodByName(const std::string& name)
{
    const std::string folded = foldedName(name);
    for (const auto& [word, unit] : kPeriodWords)
        if (folded.find(word) != std::string::npos)
            return unit;
    return std::nullopt;
}

std::optional<TimeUnit> periodByRange(const ComponentQueries& queries, const InputTable& table,
                                      const CFField& field, std::optional<TimeUnit> before)
{
    const std::string x = table.column(field);
    duck::Result range = queries.run("SELECT CAST(min(" + x + ") AS DOUBLE), CAST(max(" + x +
                                     ") AS DOUBLE) FROM " + table.name());
    const auto least = range.real(0, 0);
    const auto most = range.real(1, 0);
    for (const PeriodRange& period : kRanges)
        if (least && most && (!before || period.unit > *before) && *least >= period.least &&
            *most <= period.most)
            return period.unit;
    return std::nullopt;
}

/// A part of a timestamp as text with leading zeros. Missing unless it is a whole number in the
/// range.
std::string part(const std::string& column, int digits, int least, int most)
{
    const std::string whole = "CAST(" + column + " AS BIGINT)";
    return "(CASE WHEN " + column + " BETWEEN " + std::to_string(least) + " AND " +
           std::to_string(most) + " AND " + column + " = floor(" + column + ") THEN lpad(CAST(" +
           whole + " AS VARCHAR), " + std::to_string(digits) + ", '0') END)";
}

/// SQL for a number of days that is added to a timestamp.
std::string daysOf(const std::string& count)
{
    return "to_days(CAST(" + count + " AS INTEGER))";
}

/// Weeks are weeks of a year. Within a month or a quarter they have no number.
bool combine(const std::vector<TimeUnit>& periods)
{
    const auto has = [&](TimeUnit unit) {
        return std::find(periods.begin(), periods.end(), unit) != periods.end();
    };
    return !has(TimeUnit::Week) || (!has(TimeUnit::Month) && !has(TimeUnit::Quarter));
}

} // namespace

std::optional<std::vector<TimeUnit>> periodsOf(const ComponentQueries& queries,
                                               const InputTable& table, const Fields& point)
{
    std::vector<TimeUnit> periods;
    for (const CFField& field : point) {
        const auto before = periods.empty() ? std::nullopt : std::optional(periods.back());
        auto period = periodByName(field.GetName());
        if (!period)
            period = periodByRange(queries, table, field, before);
        // Fields must go from the coarsest to the finest period, like the parts of a date.
        if (!period || (before && *period <= *before))
            return std::nullopt;
        periods.push_back(*period);
    }
    return combine(periods) ? std::optional(periods) : std::nullopt;
}

std::string timestampOf(const std::vector<TimeUnit>& periods,
                        const std::vector<std::string>& columns)
{
    const auto has = [&](TimeUnit unit) {
        return std::find(periods.begin(), periods.end(), unit) != periods.end();
    };
    // The number of a period as text, or `standard` if no field counts it.
    const auto partOf = [&](TimeUnit unit, const char* standard, int digits, int least, int most) {
        const auto found = std::find(periods.begin(), periods.end(), unit);
        return found == periods.end()
                   ? "'" + std::string(standard) + "'"
                   : part(columns[static_cast<std::size_t>(found - periods.begin())], digits, least,
                          most);
    };
    const bool byWeek = has(TimeUnit::Week);
    const bool byMonth = has(TimeUnit::Month);
    std::string month = partOf(TimeUnit::Month, "01", 2, 1, 12);
    if (has(TimeUnit::Quarter) && !byMonth)
        month = "lpad(CAST(3 * CAST(" + partOf(TimeUnit::Quarter, "", 1, 1, 4) +
                " AS INTEGER) - 2 AS VARCHAR), 2, '0')";
    // The first week of a year contains 4 January.
    const std::string day = byMonth  ? partOf(TimeUnit::Day, "01", 2, 1, 31)
                            : byWeek ? "'04'"
                                     : "'01'";
    const std::string start = "TRY_CAST(" + partOf(TimeUnit::Year, "1970", 4, 1, 9999) +
                              " || '-' || " + month + " || '-' || " + day + " || ' ' || " +
                              partOf(TimeUnit::Hour, "00", 2, 0, 23) + " || ':' || " +
                              partOf(TimeUnit::Minute, "00", 2, 0, 59) + " || ':' || " +
                              partOf(TimeUnit::Second, "00", 2, 0, 59) + " AS TIMESTAMP)";
    std::string moment = start;
    if (byWeek)
        moment += " - " + daysOf("CAST(isodow(" + start + ") AS INTEGER) - 1") + " + " +
                  daysOf("7 * (CAST(" + partOf(TimeUnit::Week, "", 2, 1, 53) + " AS INTEGER) - 1)");
    if (has(TimeUnit::Day) && !byMonth)
        moment += " + " + daysOf("CAST(" + partOf(TimeUnit::Day, "", 3, 1, byWeek ? 7 : 366) +
                                 " AS INTEGER) - 1");
    return "(" + moment + ")";
}

} // namespace EmbeddedHV
