#include "components/temporal/explanation/ModelData.h"

#include <algorithm>
#include <limits>
#include <unordered_map>

namespace EmbeddedHV {

ModelData::ModelData(const TcmModel& model, SeriesTable table)
    : _table(std::move(table)), _columns(model.series.size(), -1)
{
    std::unordered_map<std::string, Eigen::Index> columns;
    for (const std::string& id : _table.ids)
        columns.emplace(id, static_cast<Eigen::Index>(columns.size()));
    for (std::size_t series = 0; series < model.series.size(); ++series)
        if (const auto found = columns.find(model.series[series].id); found != columns.end())
            _columns[series] = found->second;
}

double ModelData::value(std::size_t series, std::int64_t index) const
{
    if (!has(series) || index < firstIndex() || index >= endIndex())
        return std::numeric_limits<double>::quiet_NaN();
    return _table.values(index - firstIndex(), _columns[series]);
}

double ModelData::prediction(const SeriesEquation& equation, std::int64_t index) const
{
    double sum = equation.intercept;
    for (const LaggedTerm& term : equation.terms)
        sum += term.coefficient * value(term.series, index - term.lag);
    return sum;
}

std::vector<double> ModelData::predictions(const SeriesEquation& equation) const
{
    constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();
    const auto points = static_cast<std::size_t>(_table.values.rows());
    std::vector<double> sums(points, equation.intercept);
    for (const LaggedTerm& term : equation.terms) {
        if (!has(term.series))
            return std::vector<double>(points, kUnknown);
        const double* const values = _table.values.col(_columns[term.series]).data();
        const std::size_t lag = std::min(points, static_cast<std::size_t>(term.lag));
        std::fill_n(sums.begin(), lag, kUnknown);
        for (std::size_t point = lag; point < points; ++point)
            sums[point] += term.coefficient * values[point - lag];
    }
    return sums;
}

double ModelData::residual(const SeriesEquation& equation, std::int64_t index) const
{
    return value(equation.series, index) - prediction(equation, index);
}

} // namespace EmbeddedHV
