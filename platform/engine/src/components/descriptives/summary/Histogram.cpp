#include "components/descriptives/summary/Histogram.h"

#include <algorithm>

#include "components/descriptives/summary/BinEdges.h"
#include "components/descriptives/summary/Quartiles.h"
#include "duckdb/DuckDialect.h"

namespace EmbeddedHV {
namespace {

/// The column on the scale of charts: numbers unchanged, dates and times in seconds.
std::string onChartScale(const InputTable& table, const CFField& field)
{
    const std::string x = table.column(field);
    return isMoment(field) ? "epoch(" + x + ")" : "CAST(" + x + " AS DOUBLE)";
}

/// Beyond this, edges and widths could exceed the range of a double.
constexpr double kFarthest = 1e300;

struct FieldRange
{
    std::optional<double> minimum;
    std::optional<double> maximum;
    bool isWhole = false;
};

bool hasRange(const FieldSummary& field)
{
    return field.valid > 0 && !isText(field.field);
}

/// The ranges of all fields that have one, in their order, from one pass.
std::vector<FieldRange> rangesOf(const ComponentQueries& queries, const InputTable& table,
                                 const DataSummary& summary)
{
    std::string columns;
    std::size_t count = 0;
    for (const FieldSummary& field : summary.fields) {
        if (!hasRange(field))
            continue;
        ++count;
        const std::string x = onChartScale(table, field.field);
        columns.append(columns.empty() ? "SELECT min(" : ", min(").append(x);
        columns.append("), max(").append(x);
        columns.append("), CAST(bool_and(").append(x);
        columns.append(" = floor(").append(x).append(")) AS BIGINT)");
    }
    std::vector<FieldRange> ranges;
    if (count == 0)
        return ranges;
    duck::Result row = queries.run(columns + " FROM " + table.name());
    for (std::size_t i = 0; i < count; ++i)
        ranges.push_back(
            {row.real(3 * i, 0), row.real(3 * i + 1, 0), row.integer(3 * i + 2, 0) == 1});
    return ranges;
}

BinScale scaleOf(const CFField& field, const FieldRange& range)
{
    if (field.GetStorage() == CFField::Date)
        return BinScale::Days;
    if (isMoment(field))
        return BinScale::Seconds;
    return range.isWhole ? BinScale::Whole : BinScale::Real;
}

std::optional<double> interquartileRange(const ComponentQueries& queries, const InputTable& table,
                                         const FieldSummary& summary)
{
    Quartiles quartiles{summary.numeric.firstQuartile, summary.numeric.median,
                        summary.numeric.thirdQuartile};
    if (isMoment(summary.field))
        quartiles = weightedQuartiles(queries, table, onChartScale(table, summary.field),
                                      summary.validWeight);
    if (!quartiles.first || !quartiles.third)
        return std::nullopt;
    return *quartiles.third - *quartiles.first;
}

/// SQL for the bin of `x`. Compares with the exact edges; a quotient could be off by a rounding
/// error.
std::string binOf(const std::vector<double>& edges)
{
    std::string last = std::to_string(edges.size() - 2);
    if (edges.size() == 2)
        return last;
    std::string sql = "CASE";
    for (std::size_t i = 1; i + 1 < edges.size(); ++i)
        sql += " WHEN x < " + duckDialect().literal(edges[i]) + " THEN " + std::to_string(i - 1);
    return sql + " ELSE " + last + " END";
}

Histogram countBins(const ComponentQueries& queries, const InputTable& table, const CFField& field,
                    std::vector<double> edges)
{
    duck::Result rows =
        queries.run("SELECT " + binOf(edges) + " AS bin, CAST(sum(w) AS DOUBLE) FROM (SELECT " +
                    onChartScale(table, field) + " AS x, " + InputTable::kWeight + " AS w FROM " +
                    table.name() + " WHERE " + table.column(field) + " IS NOT NULL) GROUP BY bin");
    Histogram histogram{std::move(edges), {}};
    histogram.counts.resize(histogram.edges.size() - 1);
    for (std::size_t row = 0; row < rows.rows(); ++row)
        histogram.counts[static_cast<std::size_t>(rows.integer(0, row))] =
            rows.real(1, row).value_or(0);
    return histogram;
}

} // namespace

void fillHistograms(const ComponentQueries& queries, const InputTable& table, DataSummary& summary)
{
    const std::vector<FieldRange> ranges = rangesOf(queries, table, summary);
    auto next = ranges.begin();
    for (FieldSummary& field : summary.fields) {
        if (!hasRange(field))
            continue;
        const FieldRange& range = *next++;
        field.least = range.minimum;
        field.greatest = range.maximum;
        if (!range.minimum || !range.maximum || isCategorical(field.field) ||
            std::max(-*range.minimum, *range.maximum) > kFarthest)
            continue;
        field.histogram = countBins(
            queries, table, field.field,
            binEdges({*range.minimum, *range.maximum, interquartileRange(queries, table, field),
                      field.validWeight, scaleOf(field.field, range)}));
    }
}

} // namespace EmbeddedHV
