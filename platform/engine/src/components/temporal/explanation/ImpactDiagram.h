#pragma once

#include <cstdint>
#include <vector>

#include "components/temporal/explanation/CausalNetwork.h"

namespace EmbeddedHV {

enum class ImpactDirection
{
    Effects, ///< along the edges
    Causes   ///< against them
};

struct ImpactNode
{
    std::size_t series = 0;
    std::int64_t level = 0; ///< the number of edges of the shortest way from the series asked for
};

/// What a series influences or what influences it.
struct ImpactDiagram
{
    ImpactDirection direction = ImpactDirection::Effects;
    /// By level, the series asked for first. Each series is there once, also one in a cycle.
    std::vector<ImpactNode> nodes;
    /// Numbers of edges in the network: those that lead away from each node below the last level,
    /// in the order of the nodes. An edge may lead back to a node that was met before.
    std::vector<std::size_t> edges;
};

/// Walks breadth first from `series` up to `level` edges away; `level` is at least 1. Takes time
/// linear in series and edges. Throws what `check` throws.
ImpactDiagram impactDiagram(const CausalNetwork& network, std::size_t series, std::int64_t level,
                            ImpactDirection direction, const StopCheck& check);

/// The end of an edge that is farther from the series asked for.
inline std::size_t farEnd(const CausalEdge& edge, ImpactDirection direction)
{
    return direction == ImpactDirection::Effects ? edge.to : edge.from;
}

} // namespace EmbeddedHV
