#include "components/temporal/preparation/GroupValues.h"

#include <cmath>
#include <limits>

#include "runtime/KeyedCells.h"

namespace EmbeddedHV {
namespace {

/// The value of one interval of a series.
class IntervalValue
{
public:
    explicit IntervalValue(Aggregation aggregation) : _aggregation(aggregation) {}

    void add(const KeyedCellReader& cell)
    {
        if (_aggregation == Aggregation::Minimum || _aggregation == Aggregation::Maximum)
            addExtreme(cell.extreme());
        else
            _sum.add(cell.sum());
        _isEmpty = false;
    }

    /// Empties the interval. The value may be infinite.
    double take()
    {
        double value = _extreme;
        if (_aggregation == Aggregation::Sum || _aggregation == Aggregation::Mean) {
            const long double total = _sum.rounded();
            value = static_cast<double>(_aggregation == Aggregation::Mean
                                            ? total / static_cast<long double>(_sum.count())
                                            : total);
            _sum = ExactSum();
        }
        _isEmpty = true;
        return value;
    }

private:
    void addExtreme(double value)
    {
        if (_isEmpty ||
            (_aggregation == Aggregation::Minimum ? value < _extreme : value > _extreme))
            _extreme = value;
    }

    Aggregation _aggregation;
    bool _isEmpty = true;
    double _extreme = 0;
    ExactSum _sum;
};

/// Cells and times are in ascending order, and so are the intervals.
class SeriesOfGroups
{
public:
    explicit SeriesOfGroups(const TimePoints& points) : _points(points) {}

    std::vector<double> valuesOf(const std::string& cells, Aggregation aggregation,
                                 std::int64_t& overflows) const
    {
        std::vector<double> values = missingValues();
        IntervalValue value(aggregation);
        std::optional<std::int64_t> current;
        const auto finish = [&] {
            if (!current)
                return;
            double& result = values[static_cast<std::size_t>(*current)];
            result = value.take();
            if (std::isfinite(result))
                return;
            result = std::numeric_limits<double>::quiet_NaN();
            ++overflows;
        };
        std::size_t time = 0;
        for (KeyedCellReader cell(cells); cell.next();) {
            while (_points.times[time] != cell.key())
                ++time;
            const std::optional<std::int64_t>& interval = _points.intervals[time];
            if (!interval || cell.count() == 0)
                continue;
            if (interval != current)
                finish();
            current = interval;
            value.add(cell);
        }
        finish();
        return values;
    }

    std::vector<double> missingValues() const
    {
        return std::vector<double>(static_cast<std::size_t>(_points.axis.points),
                                   std::numeric_limits<double>::quiet_NaN());
    }

private:
    const TimePoints& _points;
};

} // namespace

std::vector<std::vector<double>> groupValues(const PreparationTable& table,
                                             const TsdpSettings& settings, const SeriesPlan& plan,
                                             const TimePoints& points, const StopCheck& check,
                                             std::int64_t& overflows)
{
    const std::vector<RecordGroup>& groups = table.groups()->all();
    const SeriesOfGroups reading(points);
    std::vector<std::vector<double>> values;
    values.reserve(plan.series.size());
    for (const PlannedSeries& series : plan.series) {
        check();
        const std::optional<std::size_t> group = plan.groups[series.combination];
        values.push_back(group ? reading.valuesOf(groups[*group].cells[series.metric],
                                                  settings.aggregations[series.metric], overflows)
                               : reading.missingValues());
    }
    return values;
}

} // namespace EmbeddedHV
