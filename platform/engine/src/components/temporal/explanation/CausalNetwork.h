#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "components/temporal/base/StopCheck.h"
#include "components/temporal/model/TcmModel.h"

namespace EmbeddedHV {

/// How one series acts on another in the equation of the other.
struct CausalEdge
{
    std::size_t from = 0; ///< a place in TcmModel::series, as is `to`
    std::size_t to = 0;
    std::size_t group = 0; ///< the place of `from` in the groups of the equation of `to`
    int lag = 0;           ///< that of the coefficient largest in size; of equals the smallest
    double sum = 0;        ///< of the coefficients
    /// The partial correlation of the target with all lagged values of the predictor together, from
    /// 0 to 1. Not-a-number if the equation has no degrees of freedom.
    double strength = 0;
    double fStatistic = 0;
    double pValue = 1;
    bool isForced = false;

    /// -1, 0 or 1: whether the predictor lowers or raises the target in the long run.
    int sign() const { return (sum > 0) - (sum < 0); }
};

/// The network of a model: an edge from each predictor to its target. What a target's own past does
/// is not an edge of the network. Threads may share it.
class CausalNetwork
{
public:
    /// Copies what it needs of the model. Takes time linear in series and terms.
    CausalNetwork(const TcmModel& model, const StopCheck& check);

    std::size_t seriesCount() const { return _causesFrom.size() - 1; }
    /// By target, then in order of selection.
    const std::vector<CausalEdge>& edges() const { return _edges; }
    /// The numbers of the edges that end in a series, and of those that begin there.
    std::span<const std::size_t> causesOf(std::size_t series) const;
    std::span<const std::size_t> effectsOf(std::size_t series) const;
    /// The edge of a series' own past in its equation; null if the series is not a target.
    const CausalEdge* ownPastOf(std::size_t series) const;

private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    void addEquation(const SeriesEquation& equation);
    void sortEdges(std::size_t series);

    std::vector<CausalEdge> _edges;
    std::vector<CausalEdge> _ownPasts;
    std::vector<std::size_t> _ownPastOf; ///< by series: a place in _ownPasts
    // The numbers of edges, by series: those of series i are from [i] up to [i + 1].
    std::vector<std::size_t> _causes, _causesFrom;
    std::vector<std::size_t> _effects, _effectsFrom;
};

} // namespace EmbeddedHV
