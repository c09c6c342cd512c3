#include "components/temporal/scoring/ModelAncestors.h"

#include "ErrorIds.h"
#include "JobError.h"

namespace EmbeddedHV {
namespace {

const SeriesEquation& neededEquation(const TcmModel& model, std::size_t place, PredictedBy by,
                                     const std::string& component)
{
    const SeriesEquation* equation = by == PredictedBy::Causes ? model.equationOf(place) : nullptr;
    if (!equation)
        equation = model.autoregressionOf(place);
    if (!equation)
        throw JobError(errors::kNoEquation,
                       {.step = component,
                        .series = model.series[place].name,
                        .what = "the model has no equation for the series " +
                                shownName(model.series[place]) + ", so it cannot be predicted"});
    return *equation;
}

} // namespace

std::vector<const SeriesEquation*> ancestorEquations(const TcmModel& model,
                                                     const std::vector<std::size_t>& asked,
                                                     PredictedBy by, const std::string& component)
{
    std::vector<const SeriesEquation*> equations;
    std::vector<bool> isFound(model.series.size(), false);
    const auto add = [&](std::size_t place) {
        if (isFound[place])
            return;
        isFound[place] = true;
        equations.push_back(&neededEquation(model, place, by, component));
    };
    for (const std::size_t place : asked)
        add(place);
    for (std::size_t i = 0; i < equations.size(); ++i)
        for (const LaggedTerm& term : equations[i]->terms)
            add(term.series);
    return equations;
}

} // namespace EmbeddedHV
