#include "components/descriptives/summary/Histogram.h"

#include <algorithm>

#include "components/descriptives/summary/BinEdges.h"
#include "components/descriptives/summary/ChunkColumns.h"
#include "components/descriptives/summary/GroupRows.h"
#include "components/descriptives/summary/WeightedQuantiles.h"

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

/// By group, then by field. The fields without a range have an empty one.
using Ranges = std::vector<std::vector<FieldRange>>;

/// The ranges of all fields, from one pass.
Ranges rangesOf(const ComponentQueries& queries, const InputTable& table, GroupSummaries& groups)
{
    const std::vector<FieldSummary>& fields = groups.front().fields;
    AggregateRows rows(table);
    for (const FieldSummary& field : fields) {
        if (isText(field.field))
            continue;
        const std::string x = onChartScale(table, field.field);
        rows.add("min(" + x + ")");
        rows.add("max(" + x + ")");
        std::string areWhole = "CAST(bool_and(";
        areWhole.append(x).append(" = floor(").append(x).append(")) AS BIGINT)");
        rows.add(areWhole);
    }
    Ranges ranges(groups.size(), std::vector<FieldRange>(fields.size()));
    if (rows.empty())
        return ranges;
    rows.run(queries);
    while (const DataSummary* const group = rows.next(groups))
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (isText(fields[i].field))
                continue;
            FieldRange& range = ranges[static_cast<std::size_t>(group - groups.data())][i];
            range.minimum = rows.real();
            range.maximum = rows.real();
            range.isWhole = rows.integer() == 1;
        }
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

/// The quartiles of a field in each group.
std::vector<Quantiles> quartilesOf(const ComponentQueries& queries, const InputTable& table,
                                   const GroupSummaries& groups, std::size_t field)
{
    std::vector<Quantiles> quartiles;
    std::vector<double> weights;
    for (const DataSummary& group : groups) {
        const FieldSummary& summary = group.fields[field];
        quartiles.push_back(
            {summary.numeric.firstQuartile, summary.numeric.median, summary.numeric.thirdQuartile});
        weights.push_back(summary.validWeight);
    }
    const CFField& described = groups.front().fields[field].field;
    return isMoment(described)
               ? weightedQuartiles(queries, table, onChartScale(table, described), weights)
               : quartiles;
}

/// Whether the range allows a histogram.
bool hasBins(const FieldSummary& field, const FieldRange& range)
{
    return hasRange(field) && range.minimum && range.maximum && !isCategorical(field.field) &&
           std::max(-*range.minimum, *range.maximum) <= kFarthest;
}

/// Makes the empty histogram of a field in each group.
void makeBins(const ComponentQueries& queries, const InputTable& table, const Ranges& ranges,
              std::size_t field, GroupSummaries& groups)
{
    std::vector<Quantiles> quartiles;
    for (std::size_t group = 0; group < groups.size(); ++group) {
        FieldSummary& summary = groups[group].fields[field];
        const FieldRange& range = ranges[group][field];
        if (!hasBins(summary, range))
            continue;
        if (quartiles.empty())
            quartiles = quartilesOf(queries, table, groups, field);
        const auto& first = quartiles[group].front();
        const auto& third = quartiles[group].back();
        Histogram histogram;
        histogram.edges = binEdges({*range.minimum, *range.maximum,
                                    first && third ? std::optional(*third - *first) : std::nullopt,
                                    summary.validWeight, scaleOf(summary.field, range)});
        histogram.counts.resize(histogram.edges.size() - 1);
        summary.histogram = std::move(histogram);
    }
}

/// Counts the values of all fields in their bins, in one pass.
class BinPass
{
public:
    BinPass(const InputTable& table, GroupSummaries& groups) : _table(table), _groups(groups)
    {
        for (std::size_t i = 0; i < groups.front().fields.size(); ++i)
            if (std::ranges::any_of(groups, [i](const DataSummary& group) {
                    return group.fields[i].histogram.has_value();
                }))
                _fields.push_back(i);
    }

    void run(const ComponentQueries& queries)
    {
        if (_fields.empty())
            return;
        std::string columns;
        for (const std::size_t field : _fields)
            columns += onChartScale(_table, _groups.front().fields[field].field) + ", ";
        if (_table.isGrouped())
            columns += std::string(InputTable::kGroup) + ", ";
        queries.stream("SELECT " + columns + "CAST(" + InputTable::kWeight + " AS DOUBLE) FROM " +
                           _table.name(),
                       [this](const duck::Chunk& chunk) { take(chunk); });
    }

private:
    void take(const duck::Chunk& chunk)
    {
        const std::size_t group = _fields.size();
        const std::int64_t* const groups = _table.isGrouped() ? integersOf(chunk, group) : nullptr;
        const double* const weights = numbersOf(chunk, group + (groups ? 1 : 0));
        for (std::size_t column = 0; column < _fields.size(); ++column) {
            const double* const values = numbersOf(chunk, column);
            const std::uint64_t* const validity = validityOf(chunk, column);
            for (std::size_t row = 0; row < chunk.rows(); ++row)
                if (isThere(validity, row))
                    count(_groups[groups ? static_cast<std::size_t>(groups[row] - 1) : 0]
                              .fields[_fields[column]],
                          values[row], weights[row]);
        }
    }

    static void count(FieldSummary& field, double value, double weight)
    {
        if (!field.histogram)
            return;
        // Compares with the exact edges; a quotient could be off by a rounding error.
        const std::vector<double>& edges = field.histogram->edges;
        const auto bin = std::upper_bound(edges.begin() + 1, edges.end() - 1, value);
        field.histogram->counts[static_cast<std::size_t>(bin - edges.begin() - 1)] += weight;
    }

    const InputTable& _table;
    GroupSummaries& _groups;
    std::vector<std::size_t> _fields; ///< those with a histogram in any group
};

} // namespace

void fillHistograms(const ComponentQueries& queries, const InputTable& table,
                    GroupSummaries& groups)
{
    const Ranges ranges = rangesOf(queries, table, groups);
    for (std::size_t group = 0; group < groups.size(); ++group)
        for (std::size_t i = 0; i < groups[group].fields.size(); ++i)
            if (FieldSummary& field = groups[group].fields[i]; hasRange(field)) {
                field.least = ranges[group][i].minimum;
                field.greatest = ranges[group][i].maximum;
            }
    for (std::size_t i = 0; i < groups.front().fields.size(); ++i)
        makeBins(queries, table, ranges, i, groups);
    BinPass(table, groups).run(queries);
}

} // namespace EmbeddedHV
