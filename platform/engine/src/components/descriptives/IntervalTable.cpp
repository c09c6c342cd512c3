#include "components/descriptives/IntervalTable.h"

#include <cmath>

#include "components/result/PivotTable.h"
#include "components/result/TextItem.h"
#include "components/result/ValueFormat.h"

namespace EmbeddedHV {
namespace {

/// The rows, in order.
enum Row : std::size_t
{
    Unit,
    Increment,
    Start,
    End,
    Points,
    DistinctPoints,
    MissingPoints,
    DuplicateRecords,
    MissingRecords
};

std::vector<Category> rows()
{
    const auto leaf = [](const char* title) { return Category(text::fixed(title)); };
    return {leaf("Unit of time"),
            leaf("Units from point to point"),
            leaf("First point"),
            leaf("Last point"),
            Category(text::fixed("Points"), {leaf("Total"), leaf("Occurring"), leaf("Missing")}),
            Category(text::fixed("Records"),
                     {leaf("At the point of another"), leaf("Without a point")})};
}

/// The names of the fields that form the point of time.
Json nameOf(const TimeInterval& interval)
{
    std::vector<Json> items;
    for (const std::string& field : interval.fields) {
        if (!items.empty())
            items.push_back(text::plain(", "));
        items.push_back(text::field(field));
    }
    return text::composite(std::move(items));
}

/// The text of a date or time, or the numbers of the fields that form it.
Json pointText(const TimeInterval& interval, const std::string& point,
               const std::vector<std::int64_t>& periods)
{
    if (interval.periods.empty())
        return text::plain(point);
    std::vector<Json> items;
    for (std::size_t i = 0; i < periods.size(); ++i) {
        if (i > 0)
            items.push_back(text::plain(", "));
        items.push_back(text::field(interval.fields[i]));
        items.push_back(text::plain(" " + std::to_string(periods[i])));
    }
    return text::composite(std::move(items));
}

/// The smallest number of decimals that shows the fraction of a second.
Json incrementFormat(double increment)
{
    constexpr int kMicroseconds = 6;
    int decimals = 0;
    for (double scaled = increment; decimals < kMicroseconds && scaled != std::round(scaled);
         scaled = increment * std::pow(10, decimals))
        ++decimals;
    return numberFormat(decimals);
}

class IntervalColumn
{
public:
    IntervalColumn(PivotTable& table, std::size_t column) : _table(table), _column(column) {}

    void fill(const TimeInterval& interval)
    {
        if (interval.unit) {
            _table.setText({Unit, _column}, text::fixed(wordOf(*interval.unit)));
            _table.set({Increment, _column}, interval.increment);
            _table.format({Increment, _column}, incrementFormat(interval.increment));
        } else {
            const Json reason = text::fixed("The values make up no time interval.");
            _table.note({Unit, _column}, _table.footnote(reason), numberFormat(0));
        }
        if (interval.distinct > 0) {
            _table.setText({Start, _column},
                           pointText(interval, interval.start, interval.startPeriods));
            _table.setText({End, _column}, pointText(interval, interval.end, interval.endPeriods));
        }
        count(Points, interval.points);
        count(DistinctPoints, interval.distinct);
        count(MissingPoints, interval.missingPoints);
        count(DuplicateRecords, interval.duplicates);
        count(MissingRecords, interval.missing);
    }

private:
    void count(Row row, std::int64_t number)
    {
        _table.set({row, _column}, static_cast<double>(number));
        _table.format({row, _column}, numberFormat(0));
    }

    PivotTable& _table;
    std::size_t _column;
};

} // namespace

Json intervalTable(const std::vector<TimeInterval>& intervals)
{
    std::vector<Category> columns;
    columns.reserve(intervals.size());
    for (const TimeInterval& interval : intervals)
        columns.emplace_back(nameOf(interval));
    PivotTable table("descriptives.intervals", text::fixed("Time Intervals"),
                     {{text::fixed("Statistics"), "row", rows()},
                      {text::fixed("Fields"), "column", std::move(columns)}});
    for (std::size_t i = 0; i < intervals.size(); ++i)
        IntervalColumn(table, i).fill(intervals[i]);
    return table.json();
}

} // namespace EmbeddedHV
