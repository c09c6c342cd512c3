#include "components/temporal/Explanation.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "components/temporal/DataOutliers.h"

namespace EmbeddedHV {
namespace {

bool isListed(const std::vector<std::size_t>& places, std::size_t place)
{
    return places.empty() || std::find(places.begin(), places.end(), place) != places.end();
}

/// The residual in the training data.
double trainingResidual(const SeriesEquation& equation, std::int64_t index)
{
    return index >= 0 && index < static_cast<std::int64_t>(equation.residuals.size())
               ? equation.residuals[static_cast<std::size_t>(index)]
               : std::numeric_limits<double>::quiet_NaN();
}

} // namespace

Explanation::Explanation(const TcmModel& model, const ModelData* data, const PointLabels& labels,
                         bool isEncoded, const StopCheck& check)
    : _model(model), _data(data), _labels(labels), _isEncoded(isEncoded), _check(check),
      _network(model, check), _outliers(data ? outliersIn(model, *data, check) : model.outliers)
{
}

std::vector<std::string> Explanation::nameOf(std::size_t place) const
{
    return _isEncoded || series(place).name.empty() ? std::vector{series(place).id}
                                                    : series(place).name;
}

std::string Explanation::textOf(std::size_t place) const
{
    std::string text;
    for (const std::string& part : nameOf(place))
        text += (text.empty() ? "" : ", ") + part;
    return text;
}

std::vector<SeriesOutlier> Explanation::outliersOf(const std::vector<std::size_t>& places) const
{
    std::vector<SeriesOutlier> found;
    for (const SeriesOutlier& outlier : _outliers)
        if (isListed(places, outlier.series))
            found.push_back(outlier);
    return found;
}

std::vector<const SeriesEquation*>
Explanation::equationsOf(const std::vector<std::size_t>& places) const
{
    std::vector<const SeriesEquation*> found;
    for (const SeriesEquation& equation : _model.equations)
        if (isListed(places, equation.series))
            found.push_back(&equation);
    return found;
}

const LatestChange* Explanation::latestChangeOf(std::size_t place) const
{
    const SeriesEquation* equation = _data ? _model.equationOf(place) : nullptr;
    if (!equation)
        return nullptr;
    const auto [change, isNew] = _changes.try_emplace(place);
    if (isNew)
        change->second = latestChange(*_data, *equation);
    return change->second ? &*change->second : nullptr;
}

std::optional<double> Explanation::contributionOf(const CausalEdge& edge) const
{
    const LatestChange* change = latestChangeOf(edge.to);
    if (!change || std::isnan(change->contributions[edge.group]))
        return std::nullopt;
    return change->contributions[edge.group];
}

OutlierOrigin Explanation::originOf(const SeriesOutlier& outlier, std::int64_t level,
                                    std::size_t most) const
{
    const ResidualSource residuals = [this](const SeriesEquation& equation, std::int64_t index) {
        return _data ? _data->residual(equation, index) : trainingResidual(equation, index);
    };
    return EmbeddedHV::originOf(_model, residuals, {outlier.series, outlier.timeIndex}, level, most,
                                _check);
}

} // namespace EmbeddedHV
