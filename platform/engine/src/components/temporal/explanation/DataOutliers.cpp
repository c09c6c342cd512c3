#include "components/temporal/explanation/DataOutliers.h"

#include <algorithm>
#include <cmath>

#include "components/statistics/Distributions.h"

namespace EmbeddedHV {
namespace {

void addOutliers(const ModelData& data, const SeriesEquation& equation, double level,
                 std::vector<SeriesOutlier>& outliers)
{
    const auto freedom = static_cast<double>(equation.fit.observations - equation.fit.parameters);
    // A perfect fit has no scale to measure a residual by.
    if (!(freedom > 0) || !(equation.residualVariance > 0) || !(level > 0 && level < 1))
        return;
    const double bound = twoSidedTBound(level, freedom);
    const double deviation = std::sqrt(equation.residualVariance);
    const std::vector<double> predictions = data.predictions(equation);
    for (std::size_t point = 0; point < predictions.size(); ++point) {
        const std::int64_t index = data.firstIndex() + static_cast<std::int64_t>(point);
        const double predicted = predictions[point];
        const double actual = data.value(equation.series, index);
        const double t = std::abs(actual - predicted) / deviation;
        if (t > bound && std::isfinite(t))
            outliers.push_back({equation.series, index, actual, predicted, twoSidedT(t, freedom)});
    }
}

} // namespace

std::vector<SeriesOutlier> outliersIn(const TcmModel& model, const ModelData& data,
                                      const StopCheck& check)
{
    std::vector<SeriesOutlier> outliers;
    for (const SeriesEquation& equation : model.equations) {
        check();
        if (data.has(equation.series))
            addOutliers(data, equation, model.outlierLevel, outliers);
    }
    return outliers;
}

std::vector<SeriesOutlier> leastLikely(const std::vector<SeriesOutlier>& outliers, std::size_t most)
{
    if (outliers.size() <= most)
        return outliers;
    std::vector<double> pValues;
    pValues.reserve(outliers.size());
    for (const SeriesOutlier& outlier : outliers)
        pValues.push_back(outlier.pValue);
    std::nth_element(pValues.begin(), pValues.begin() + static_cast<std::ptrdiff_t>(most),
                     pValues.end());
    const double bound = pValues[most];
    auto below = static_cast<std::size_t>(std::count_if(
        pValues.begin(), pValues.end(), [bound](double pValue) { return pValue < bound; }));
    std::vector<SeriesOutlier> kept;
    kept.reserve(most);
    for (const SeriesOutlier& outlier : outliers)
        if (outlier.pValue < bound || (outlier.pValue == bound && below++ < most))
            kept.push_back(outlier);
    return kept;
}

} // namespace EmbeddedHV
