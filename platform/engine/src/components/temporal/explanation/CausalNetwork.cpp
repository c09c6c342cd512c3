#include "components/temporal/explanation/CausalNetwork.h"

#include <cmath>
#include <limits>
#include <map>

namespace EmbeddedHV {
namespace {

/// The coefficients of one predictor.
struct GroupEffect
{
    int terms = 0;
    int lag = 0;
    double largest = -1;
    double sum = 0;

    void add(const LaggedTerm& term)
    {
        const double size = std::abs(term.coefficient);
        if (size > largest || (size == largest && term.lag < lag)) {
            largest = size;
            lag = term.lag;
        }
        sum += term.coefficient;
        ++terms;
    }
};

/// The multiple partial correlation that belongs to an F statistic of `terms` coefficients:
/// R2 = F k / (F k + n - p), W. H. Greene, Econometric Analysis, on partial correlations.
double partialCorrelation(const PredictorGroup& group, int terms, const FitStatistics& fit)
{
    const auto freedom = static_cast<double>(fit.observations - fit.parameters);
    if (!(freedom > 0) || !(group.fStatistic >= 0))
        return std::numeric_limits<double>::quiet_NaN();
    if (std::isinf(group.fStatistic))
        return 1;
    const double weighted = group.fStatistic * terms;
    return std::isinf(weighted) ? 1 : std::sqrt(weighted / (weighted + freedom));
}

std::map<std::size_t, GroupEffect> effectsIn(const SeriesEquation& equation)
{
    std::map<std::size_t, GroupEffect> effects;
    for (const LaggedTerm& term : equation.terms)
        effects[term.series].add(term);
    return effects;
}

/// Where the edges of each series begin once they are sorted, with one more entry for the end.
std::vector<std::size_t> startsOf(const std::vector<CausalEdge>& edges, std::size_t series,
                                  std::size_t CausalEdge::*end)
{
    std::vector<std::size_t> starts(series + 1, 0);
    for (const CausalEdge& edge : edges)
        ++starts[edge.*end + 1];
    for (std::size_t i = 0; i < series; ++i)
        starts[i + 1] += starts[i];
    return starts;
}

std::vector<std::size_t> sortedBy(const std::vector<CausalEdge>& edges,
                                  std::vector<std::size_t> next, std::size_t CausalEdge::*end)
{
    std::vector<std::size_t> sorted(edges.size());
    for (std::size_t i = 0; i < edges.size(); ++i)
        sorted[next[edges[i].*end]++] = i;
    return sorted;
}

} // namespace

CausalNetwork::CausalNetwork(const TcmModel& model, const StopCheck& check)
    : _ownPastOf(model.series.size(), kNone)
{
    for (const SeriesEquation& equation : model.equations) {
        check();
        addEquation(equation);
    }
    sortEdges(model.series.size());
}

void CausalNetwork::addEquation(const SeriesEquation& equation)
{
    const auto effects = effectsIn(equation);
    for (std::size_t i = 0; i < equation.groups.size(); ++i) {
        const PredictorGroup& group = equation.groups[i];
        const auto found = effects.find(group.series);
        if (found == effects.end())
            continue;
        const GroupEffect& effect = found->second;
        const CausalEdge edge{group.series,
                              equation.series,
                              i,
                              effect.lag,
                              effect.sum,
                              partialCorrelation(group, effect.terms, equation.fit),
                              group.fStatistic,
                              group.pValue,
                              group.isForced};
        if (edge.from != edge.to) {
            _edges.push_back(edge);
        } else {
            _ownPastOf[edge.to] = _ownPasts.size();
            _ownPasts.push_back(edge);
        }
    }
}

void CausalNetwork::sortEdges(std::size_t series)
{
    _causesFrom = startsOf(_edges, series, &CausalEdge::to);
    _causes = sortedBy(_edges, _causesFrom, &CausalEdge::to);
    _effectsFrom = startsOf(_edges, series, &CausalEdge::from);
    _effects = sortedBy(_edges, _effectsFrom, &CausalEdge::from);
}

std::span<const std::size_t> CausalNetwork::causesOf(std::size_t series) const
{
    return std::span(_causes).subspan(_causesFrom[series],
                                      _causesFrom[series + 1] - _causesFrom[series]);
}

std::span<const std::size_t> CausalNetwork::effectsOf(std::size_t series) const
{
    return std::span(_effects).subspan(_effectsFrom[series],
                                       _effectsFrom[series + 1] - _effectsFrom[series]);
}

const CausalEdge* CausalNetwork::ownPastOf(std::size_t series) const
{
    return _ownPastOf[series] == kNone ? nullptr : &_ownPasts[_ownPastOf[series]];
}

} // namespace EmbeddedHV
