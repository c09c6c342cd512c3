#include "components/temporal/explanation/Explanation.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "components/temporal/explanation/DataOutliers.h"

namespace EmbeddedHV {
namespace {

bool isListed(const std::vector<std::size_t>& places, std::size_t place)
{
    return places.empty() || std::find(places.begin(), places.end(), place) != places.end();
}

/// The last values of the training as data.
SeriesTable endOfTraining(const TcmModel& model)
{
    SeriesTable table;
    for (const ModelSeries& series : model.series)
        table.ids.push_back(series.id);
    table.values = model.lastValues;
    table.firstIndex = model.trainingPoints - table.values.rows();
    return table;
}

/// The residual in the training data.
double trainingResidual(const SeriesEquation& equation, std::int64_t index)
{
    return index >= 0 && index < static_cast<std::int64_t>(equation.residuals.size())
               ? equation.residuals[static_cast<std::size_t>(index)]
               : std::numeric_limits<double>::quiet_NaN();
}

} // namespace

Explanation::Explanation(ExplanationInput input)
    : _input(std::move(input)), _network(model(), _input.check),
      _outliers(data() ? outliersIn(model(), *data(), _input.check) : model().outliers)
{
}

std::vector<std::string> Explanation::nameOf(std::size_t place) const
{
    return _input.isEncoded || series(place).name.empty() ? std::vector{series(place).id}
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
    for (const SeriesEquation& equation : model().equations)
        if (isListed(places, equation.series))
            found.push_back(&equation);
    return found;
}

const LatestChange* Explanation::latestChangeOf(std::size_t place) const
{
    const SeriesEquation* equation = data() ? model().equationOf(place) : nullptr;
    if (!equation)
        return nullptr;
    const auto [change, isNew] = _changes.try_emplace(place);
    if (isNew)
        change->second = latestChange(*data(), *equation);
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
        return data() ? data()->residual(equation, index) : trainingResidual(equation, index);
    };
    return EmbeddedHV::originOf(model(), residuals, {outlier.series, outlier.timeIndex}, level,
                                most, _input.check);
}

Scores Explanation::scoresOf(const ScoringRequest& request) const
{
    return score(model(), data() ? data()->table() : endOfTraining(model()), request,
                 _input.component, _input.check);
}

} // namespace EmbeddedHV
