#include "components/temporal/explanation/OutlierOrigin.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

namespace EmbeddedHV {
namespace {

/// What a unit shock at one point does to the value that is explained.
struct ShockWeight
{
    double total = 0;     ///< over all paths
    double strongest = 0; ///< of the path largest in size
    SeriesPoint next;     ///< the next point on that path
};

/// The weights of all series, point by point from the explained value back in time.
class ShockWeights
{
public:
    ShockWeights(const TcmModel& model, SeriesPoint explained, std::int64_t firstIndex)
        : _model(model), _explained(explained), _firstIndex(firstIndex)
    {
        for (std::int64_t back = 0; back <= explained.timeIndex - firstIndex; ++back)
            _points.emplace_back(model.series.size());
        weight(explained) = {1, 1, explained};
    }

    /// Hands the weight of each series at the point on to the values that its equation takes.
    /// Points are left from the latest to the earliest.
    void leave(std::int64_t index)
    {
        for (std::size_t series = 0; series < _model.series.size(); ++series) {
            const ShockWeight& known = weight({series, index});
            if (known.total == 0 && known.strongest == 0)
                continue;
            if (const SeriesEquation* equation = systemEquation(_model, series))
                for (const LaggedTerm& term : equation->terms)
                    if (index - term.lag >= _firstIndex)
                        hand(known, {series, index}, term);
        }
    }

    const ShockWeight& at(SeriesPoint point) const
    {
        return _points[static_cast<std::size_t>(_explained.timeIndex - point.timeIndex)]
                      [point.series];
    }

    std::vector<SeriesPoint> pathFrom(SeriesPoint point) const
    {
        std::vector<SeriesPoint> path{point};
        while (path.back().timeIndex < _explained.timeIndex)
            path.push_back(at(path.back()).next);
        return path;
    }

private:
    ShockWeight& weight(SeriesPoint point)
    {
        return _points[static_cast<std::size_t>(_explained.timeIndex - point.timeIndex)]
                      [point.series];
    }

    void hand(const ShockWeight& known, SeriesPoint from, const LaggedTerm& term)
    {
        ShockWeight& reached = weight({term.series, from.timeIndex - term.lag});
        reached.total += term.coefficient * known.total;
        const double path = term.coefficient * known.strongest;
        if (std::abs(path) > std::abs(reached.strongest)) {
            reached.strongest = path;
            reached.next = from;
        }
    }

    const TcmModel& _model;
    SeriesPoint _explained;
    std::int64_t _firstIndex;
    std::vector<std::vector<ShockWeight>> _points; ///< by points back, then by series
};

/// Larger contributions first; of equals the later one, then the first series.
bool comesBefore(const OriginShock& a, const OriginShock& b)
{
    return std::tuple(-std::abs(a.contribution), -a.at.timeIndex, a.at.series) <
           std::tuple(-std::abs(b.contribution), -b.at.timeIndex, b.at.series);
}

/// Adds the shocks of a point of time; false if one of them is unknown.
bool addShocks(const TcmModel& model, const ResidualSource& residuals, const ShockWeights& weights,
               std::int64_t index, std::vector<OriginShock>& shocks)
{
    bool areKnown = true;
    for (std::size_t series = 0; series < model.series.size(); ++series) {
        const SeriesPoint point{series, index};
        const ShockWeight& weight = weights.at(point);
        if (weight.total == 0 && weight.strongest == 0)
            continue;
        const SeriesEquation* equation = systemEquation(model, series);
        const double residual =
            equation ? residuals(*equation, index) : std::numeric_limits<double>::quiet_NaN();
        if (std::isnan(residual))
            areKnown = false;
        else
            shocks.push_back(
                {point, residual, weight.total * residual, {}, weight.strongest * residual});
    }
    return areKnown;
}

double sumOf(const std::vector<OriginShock>& shocks, std::size_t from)
{
    double sum = 0;
    for (std::size_t i = from; i < shocks.size(); ++i)
        sum += shocks[i].contribution;
    return sum;
}

std::int64_t firstIndexOf(const TcmModel& model, std::int64_t index, std::int64_t level)
{
    const std::int64_t lags = std::max(model.lags, 1);
    const std::int64_t back =
        level > kMostPointsBack / lags ? kMostPointsBack : std::max<std::int64_t>(level, 1) * lags;
    return std::max<std::int64_t>(index - back, 0);
}

} // namespace

const SeriesEquation* systemEquation(const TcmModel& model, std::size_t series)
{
    const SeriesEquation* equation = model.equationOf(series);
    return equation ? equation : model.autoregressionOf(series);
}

OutlierOrigin originOf(const TcmModel& model, const ResidualSource& residuals, SeriesPoint outlier,
                       std::int64_t level, std::size_t most, const StopCheck& check)
{
    OutlierOrigin origin;
    origin.firstIndex = firstIndexOf(model, outlier.timeIndex, level);
    const SeriesEquation* equation = systemEquation(model, outlier.series);
    origin.residual = equation ? residuals(*equation, outlier.timeIndex)
                               : std::numeric_limits<double>::quiet_NaN();
    ShockWeights weights(model, outlier, origin.firstIndex);
    weights.leave(outlier.timeIndex);
    std::vector<OriginShock> shocks;
    bool areKnown = true;
    for (std::int64_t index = outlier.timeIndex - 1; index >= origin.firstIndex; --index) {
        check();
        areKnown = addShocks(model, residuals, weights, index, shocks) && areKnown;
        weights.leave(index);
    }
    std::sort(shocks.begin(), shocks.end(), comesBefore);
    origin.departure =
        areKnown ? origin.residual + sumOf(shocks, 0) : std::numeric_limits<double>::quiet_NaN();
    origin.others = sumOf(shocks, std::min(most, shocks.size()));
    shocks.resize(std::min(most, shocks.size()));
    for (OriginShock& shock : shocks)
        shock.path = weights.pathFrom(shock.at);
    origin.shocks = std::move(shocks);
    return origin;
}

} // namespace EmbeddedHV
