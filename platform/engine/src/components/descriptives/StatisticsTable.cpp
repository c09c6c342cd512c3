#include "components/descriptives/StatisticsTable.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "components/descriptives/model/ValueDecimals.h"
#include "components/result/PivotTable.h"
#include "components/result/TextItem.h"
#include "components/result/ValueFormat.h"

namespace EmbeddedHV {
namespace {

constexpr int kDecimalsOfWeights = 3;
constexpr int kDecimalsOfShapes = 3;
/// The same for minimum and maximum. Fewer digits, because the field's own format normally
/// determines their decimals.
constexpr int kDigitsOfRange = 2;

enum class Kind
{
    Records,
    Weight,
    Range,
    Between, ///< on the scale of the values, but not a value itself
    Spread,  ///< the same, and never negative
    Square,
    Shape
};

/// A column of the table. A group begins at a column whose group differs from that of the previous
/// column.
struct Statistic
{
    std::string_view group; ///< empty for a column outside groups
    const char* title;
    Kind kind;
    std::optional<double> (*value)(const FieldSummary&);
    double leastWeight; ///< least total weight of the values for which it is defined
    bool needsVariety;  ///< not defined if all values are equal
};

std::optional<double> countOf(std::int64_t count)
{
    return static_cast<double>(count);
}

using Field = const FieldSummary&;
constexpr Statistic kRecords[] = {
    {"N", "Valid", Kind::Records, [](Field f) { return countOf(f.valid); }, 0, false},
    {"N", "Missing", Kind::Records, [](Field f) { return countOf(f.missing); }, 0, false},
};
constexpr Statistic kWeights[] = {
    {"N", "Valid", Kind::Weight, [](Field f) { return std::optional(f.validWeight); }, 0, false},
    {"N", "Missing", Kind::Weight, [](Field f) { return std::optional(f.missingWeight); }, 0,
     false},
    {"Unweighted N", "Valid", Kind::Records, [](Field f) { return countOf(f.valid); }, 0, false},
    {"Unweighted N", "Missing", Kind::Records, [](Field f) { return countOf(f.missing); }, 0,
     false},
};
/// The variance is defined if the weight is above 1. This is slightly more than 1.
constexpr double kAboveOne = 1 + 1e-15;
constexpr Statistic kSummaries[] = {
    {"", "Mean", Kind::Between, [](Field f) { return f.numeric.mean; }, 0, false},
    {"", "Std. Deviation", Kind::Spread, [](Field f) { return f.numeric.standardDeviation; },
     kAboveOne, false},
    {"", "Variance", Kind::Square, [](Field f) { return f.numeric.variance; }, kAboveOne, false},
    {"", "Skewness", Kind::Shape, [](Field f) { return f.numeric.skewness; }, 3, true},
    {"", "Kurtosis", Kind::Shape, [](Field f) { return f.numeric.kurtosis; }, 4, true},
    {"", "Minimum", Kind::Range, [](Field f) { return f.least; }, 0, false},
    {"", "Maximum", Kind::Range, [](Field f) { return f.greatest; }, 0, false},
    {"Quartiles", "First", Kind::Between, [](Field f) { return f.numeric.firstQuartile; }, 0,
     false},
    {"Quartiles", "Median", Kind::Between, [](Field f) { return f.numeric.median; }, 0, false},
    {"Quartiles", "Third", Kind::Between, [](Field f) { return f.numeric.thirdQuartile; }, 0,
     false},
};

/// Weighted data have columns for weights and for counts of records, other data only for counts.
std::vector<Statistic> columnsFor(const DataSummary& summary, bool withSummaries)
{
    std::vector<Statistic> columns;
    if (summary.weightField)
        columns.assign(std::begin(kWeights), std::end(kWeights));
    else
        columns.assign(std::begin(kRecords), std::end(kRecords));
    if (withSummaries)
        columns.insert(columns.end(), std::begin(kSummaries), std::end(kSummaries));
    return columns;
}

/// Neighbouring statistics of the same group share a heading.
std::vector<Category> categoriesOf(const std::vector<Statistic>& columns)
{
    std::vector<Category> categories;
    std::string_view group;
    for (const Statistic& column : columns) {
        Category leaf(text::fixed(column.title));
        if (column.group.empty())
            categories.push_back(std::move(leaf));
        else if (column.group == group)
            categories.back().members.push_back(std::move(leaf));
        else
            categories.emplace_back(text::fixed(std::string(column.group)),
                                    std::vector{std::move(leaf)});
        group = column.group;
    }
    return categories;
}

bool isCount(Kind kind)
{
    return kind == Kind::Records || kind == Kind::Weight;
}

/// Whether the statistic is meaningful for such a field.
bool applies(const Statistic& statistic, const CFField& field)
{
    return isCount(statistic.kind) || isNumber(field) ||
           (isMoment(field) && statistic.kind == Kind::Range);
}

Json countFormat(Kind kind)
{
    return numberFormat(kind == Kind::Weight ? kDecimalsOfWeights : 0);
}

/// A mean has more decimals than the values. Skewness and kurtosis have a fixed number.
Json formatFor(const Statistic& statistic, const FieldSummary& field)
{
    const int decimals = decimalsOfValues(field);
    const int between = decimalsBetweenValues(field);
    // Otherwise the field's format could show different ends of the range as equal.
    const int least =
        decimalsFor(field.numeric.standardDeviation.value_or(0)) - (kDigitsShown - kDigitsOfRange);
    switch (statistic.kind) {
    case Kind::Records:
    case Kind::Weight:
        return countFormat(statistic.kind);
    case Kind::Shape:
        return numberFormat(kDecimalsOfShapes);
    case Kind::Square:
        return numberFormat(std::max(between, decimalsFor(field.numeric.variance.value_or(0))));
    case Kind::Range:
        return valueFormat(field.field, std::max(decimals, least));
    default:
        return valueFormat(field.field, between);
    }
}

/// The reason why a statistic has no value although it is meaningful.
const char* reasonOf(const Statistic& statistic, const FieldSummary& field)
{
    if (field.valid == 0)
        return "There is no valid value.";
    if (field.validWeight < statistic.leastWeight)
        return "There are too few valid values.";
    if (statistic.needsVariety && field.numeric.variance == 0.0)
        return "All valid values are the same.";
    return nullptr;
}

class Filling
{
public:
    Filling(PivotTable& table, const std::vector<Statistic>& columns)
        : _table(table), _columns(columns)
    {
    }

    void countFormats()
    {
        for (std::size_t column = 0; column < _columns.size(); ++column)
            if (isCount(_columns[column].kind))
                _table.format({CellKeys::kAny, column}, countFormat(_columns[column].kind));
    }

    void row(std::size_t row, const FieldSummary& field)
    {
        for (std::size_t column = 0; column < _columns.size(); ++column)
            if (applies(_columns[column], field.field))
                cell({row, column}, _columns[column], field);
    }

private:
    void cell(const PivotTable::Places& place, const Statistic& statistic,
              const FieldSummary& field)
    {
        const std::optional<double> value = statistic.value(field);
        _table.set(place, value);
        if (!value)
            explain(place, statistic, field);
        else if (!isCount(statistic.kind))
            _table.format(place, formatFor(statistic, field));
    }

    void explain(const PivotTable::Places& place, const Statistic& statistic,
                 const FieldSummary& field)
    {
        const char* reason = reasonOf(statistic, field);
        Json format = formatFor(statistic, field);
        if (!reason) {
            reason = "The result is beyond the range of numbers.";
            // A value that cannot be negative has overflowed upwards, so it is shown as infinite.
            if (statistic.kind == Kind::Spread || statistic.kind == Kind::Square) {
                format["positiveInfinity"] = true;
                _table.set(place, 0);
            }
        }
        _table.note(place, _table.footnote(text::fixed(reason)), format);
    }

    PivotTable& _table;
    const std::vector<Statistic>& _columns;
};

/// Tells the reader that counts are weights, and how many records were left out.
void tellWeight(PivotTable& table, const DataSummary& summary)
{
    if (!summary.weightField)
        return;
    table.addCaption(
        text::composite({text::fixed("Weighted by "), text::field(*summary.weightField)}));
    if (summary.leftOut > 0)
        table.noteTitle(table.footnote(text::composite(
            {text::fixed("Records left out, since their weight is missing, not above 0 or "
                         "infinite: "),
             text::number(static_cast<double>(summary.leftOut), numberFormat(0))})));
}

} // namespace

Json statisticsTable(const DataSummary& summary, bool withSummaries)
{
    const std::vector<Statistic> columns = columnsFor(summary, withSummaries);
    std::vector<Category> fields;
    for (const FieldSummary& field : summary.fields)
        fields.emplace_back(text::field(field.field.GetName()));
    PivotTable table("descriptives.statistics", text::fixed("Descriptive Statistics"),
                     {{text::fixed("Fields"), "row", std::move(fields)},
                      {text::fixed("Statistics"), "column", categoriesOf(columns), true}});
    tellWeight(table, summary);
    Filling filling(table, columns);
    filling.countFormats();
    for (std::size_t row = 0; row < summary.fields.size(); ++row)
        filling.row(row, summary.fields[row]);
    return table.json();
}

} // namespace EmbeddedHV
