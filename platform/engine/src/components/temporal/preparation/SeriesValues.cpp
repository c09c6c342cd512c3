#include "components/temporal/preparation/SeriesValues.h"

#include <algorithm>
#include <cmath>

#include "ErrorIds.h"
#include "JobError.h"
#include "components/temporal/preparation/CellValues.h"
#include "components/temporal/preparation/GroupValues.h"
#include "components/temporal/preparation/PreparationLimits.h"
#include "runtime/ExactSums.h"

namespace EmbeddedHV {
namespace {

constexpr std::int64_t kNoSeries = -1;
/// The columns before it are those of the interval, the combination and the order.
constexpr std::size_t kFirstMetric = 3;

/// The values of one metric on their way into cells.
struct MetricCells
{
    std::size_t metric = 0;
    /// For each combination the place of its series among those of the metric, or kNoSeries.
    std::vector<std::int64_t> placeOf;
    std::vector<std::size_t> series; ///< places in the plan
    std::optional<CellValues> values;
};

const std::int64_t* integersOf(const duck::Chunk& chunk, std::size_t column)
{
    return static_cast<const std::int64_t*>(duckdb_vector_get_data(chunk.column(column)));
}

/// Reads the records, each with its point of time and its combination, and aggregates their values.
class SeriesGathering
{
public:
    SeriesGathering(JobContext& context, const std::string& component,
                    const PreparationTable& table, const TsdpSettings& settings,
                    const SeriesPlan& plan, const TimePoints& points)
        : _context(context), _component(component), _table(table), _settings(settings), _plan(plan),
          _points(points), _queries(context, component)
    {
    }

    std::vector<std::vector<double>> run()
    {
        if (_table.groups()) {
            std::int64_t overflows = 0;
            auto values = groupValues(_table, _settings, _plan, _points,
                                      stopCheckOf(_context, _component), overflows);
            tellOverflows(overflows);
            return values;
        }
        makeCells();
        readValues();
        for (MetricCells& cells : _cells)
            if (cells.values->aggregation() == Aggregation::Mode)
                readMode(cells);
        return finish();
    }

private:
    std::size_t pointCount() const { return static_cast<std::size_t>(_points.axis.points); }

    void makeCells()
    {
        _cells.resize(_settings.metrics.size());
        for (std::size_t metric = 0; metric < _cells.size(); ++metric) {
            _cells[metric].metric = metric;
            _cells[metric].placeOf.assign(_plan.combinations.size(), kNoSeries);
        }
        for (std::size_t i = 0; i < _plan.series.size(); ++i) {
            MetricCells& cells = _cells[_plan.series[i].metric];
            cells.placeOf[_plan.series[i].combination] =
                static_cast<std::int64_t>(cells.series.size());
            cells.series.push_back(i);
        }
        std::erase_if(_cells, [](const MetricCells& cells) { return cells.series.empty(); });
        for (MetricCells& cells : _cells)
            cells.values.emplace(_settings.aggregations[cells.metric],
                                 cells.series.size() * pointCount());
    }

    /// Whether the order of the records counts, in time and in the input.
    bool isOrdered() const
    {
        return std::any_of(_cells.begin(), _cells.end(), [](const MetricCells& cells) {
            return cells.values->aggregation() == Aggregation::First ||
                   cells.values->aggregation() == Aggregation::Last;
        });
    }

    /// FROM with the number `i` of the interval, the place `k` of the combination and `o`, which
    /// orders the records in time if that counts.
    std::string numberedRecords(const std::string& columns) const
    {
        const std::string k = _plan.table.empty() ? "CAST(0 AS BIGINT)" : "c.k";
        std::string joins;
        if (!_plan.table.empty())
            joins += " JOIN " + _plan.table + " AS c USING (" + _table.dimensionColumns() + ")";
        if (_points.axis.isRecordNumber())
            return "(SELECT row_number() OVER (PARTITION BY " + k +
                   " ORDER BY x.rowid) - 1 AS i, " + k + " AS k, CAST(0 AS BIGINT) AS o, " +
                   columns + " FROM " + _table.name() + " AS x" + joins + ")";
        joins += " JOIN " + _points.table + " AS p USING (" + _table.timeColumns() + ")";
        const std::string order =
            isOrdered() ? "p.r * (SELECT count(*) FROM " + _table.name() + ") + x.rowid"
                        : "CAST(0 AS BIGINT)";
        return "(SELECT p.i AS i, " + k + " AS k, " + order + " AS o, " + columns + " FROM " +
               _table.name() + " AS x" + joins + ")";
    }

    void readValues()
    {
        std::string columns;
        std::vector<MetricCells*> wanted;
        for (MetricCells& cells : _cells)
            if (cells.values->aggregation() != Aggregation::Mode) {
                columns +=
                    (columns.empty() ? "" : ", ") + PreparationTable::metricColumn(cells.metric);
                wanted.push_back(&cells);
            }
        if (wanted.empty())
            return;
        _queries.stream("SELECT i, k, o, " + columns + " FROM " + numberedRecords(columns),
                        [&](duck::Chunk& chunk) {
                            for (std::size_t place = 0; place < wanted.size(); ++place)
                                if (hasSums(*wanted[place]))
                                    takeSums(chunk, place, *wanted[place]);
                                else
                                    take(chunk, place, *wanted[place]);
                        });
    }

    bool hasSums(const MetricCells& cells) const
    {
        const Aggregation aggregation = cells.values->aggregation();
        return _table.isGrouped() &&
               (aggregation == Aggregation::Sum || aggregation == Aggregation::Mean);
    }

    void takeSums(const duck::Chunk& chunk, std::size_t place, MetricCells& cells)
    {
        const ExactSumReader sums(chunk.column(kFirstMetric + place));
        const std::int64_t* const indexes = integersOf(chunk, 0);
        const std::int64_t* const combinations = integersOf(chunk, 1);
        for (std::size_t row = 0; row < chunk.rows(); ++row) {
            const std::int64_t series = cells.placeOf[static_cast<std::size_t>(combinations[row])];
            if (series != kNoSeries && sums.countAt(row) > 0)
                cells.values->addSum(cellOf(series, indexes[row]), sums.at(row));
        }
    }

    void take(const duck::Chunk& chunk, std::size_t place, MetricCells& cells)
    {
        const duckdb_vector vector = chunk.column(kFirstMetric + place);
        const auto* const values = static_cast<const double*>(duckdb_vector_get_data(vector));
        std::uint64_t* const validity = duckdb_vector_get_validity(vector);
        const std::int64_t* const indexes = integersOf(chunk, 0);
        const std::int64_t* const combinations = integersOf(chunk, 1);
        const std::int64_t* const orders = integersOf(chunk, 2);
        for (std::size_t row = 0; row < chunk.rows(); ++row) {
            const std::int64_t series = cells.placeOf[static_cast<std::size_t>(combinations[row])];
            if (series == kNoSeries || (validity && !duckdb_validity_row_is_valid(validity, row)))
                continue;
            cells.values->add(cellOf(series, indexes[row]), values[row], orders[row]);
        }
    }

    std::size_t cellOf(std::int64_t series, std::int64_t index) const
    {
        return static_cast<std::size_t>(series) * pointCount() + static_cast<std::size_t>(index);
    }

    void readMode(MetricCells& cells)
    {
        const std::string column = PreparationTable::metricColumn(cells.metric);
        _queries.stream(
            "SELECT i, k, count(*), " + column + " FROM " + numberedRecords(column) + " WHERE " +
                column + " IS NOT NULL GROUP BY i, k, " + column,
            [&](duck::Chunk& chunk) {
                const auto* const values =
                    static_cast<const double*>(duckdb_vector_get_data(chunk.column(3)));
                for (std::size_t row = 0; row < chunk.rows(); ++row) {
                    const std::int64_t series =
                        cells.placeOf[static_cast<std::size_t>(integersOf(chunk, 1)[row])];
                    if (series != kNoSeries)
                        cells.values->addCounted(cellOf(series, integersOf(chunk, 0)[row]),
                                                 values[row], integersOf(chunk, 2)[row]);
                }
            });
    }

    void throwIfStopped() const
    {
        if (_context.stopping())
            throw JobError(errors::kQueryFailed,
                           {.step = _component, .what = "the job was stopped"});
    }

    std::vector<std::vector<double>> finish()
    {
        std::vector<std::vector<double>> result(_plan.series.size());
        std::int64_t overflows = 0;
        for (MetricCells& cells : _cells) {
            const std::vector<double> values = cells.values->finish(overflows);
            for (std::size_t place = 0; place < cells.series.size(); ++place) {
                throwIfStopped();
                const auto begin =
                    values.begin() + static_cast<std::ptrdiff_t>(place * pointCount());
                result[cells.series[place]].assign(
                    begin, begin + static_cast<std::ptrdiff_t>(pointCount()));
            }
        }
        tellOverflows(overflows);
        return result;
    }

    void tellOverflows(std::int64_t overflows) const
    {
        if (overflows > 0)
            _context.message(errors::kTsdpOverflow,
                             {.step = _component,
                              .what = "sums that are larger than any number, which are missing "
                                      "values: " +
                                      std::to_string(overflows)});
    }

    JobContext& _context;
    const std::string& _component;
    const PreparationTable& _table;
    const TsdpSettings& _settings;
    const SeriesPlan& _plan;
    const TimePoints& _points;
    ComponentQueries _queries;
    std::vector<MetricCells> _cells; ///< of metrics that have a series
};

} // namespace

std::vector<std::vector<double>> seriesValues(JobContext& context, const std::string& component,
                                              const PreparationTable& table,
                                              const TsdpSettings& settings, const SeriesPlan& plan,
                                              const TimePoints& points)
{
    checkValueCount(component, points.axis.points, static_cast<std::int64_t>(plan.series.size()));
    return SeriesGathering(context, component, table, settings, plan, points).run();
}

} // namespace EmbeddedHV
