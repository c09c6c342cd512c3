#include "components/temporal/explanation/ImpactDiagram.h"

namespace EmbeddedHV {

ImpactDiagram impactDiagram(const CausalNetwork& network, std::size_t series, std::int64_t level,
                            ImpactDirection direction, const StopCheck& check)
{
    ImpactDiagram diagram;
    diagram.direction = direction;
    std::vector<bool> isMet(network.seriesCount(), false);
    isMet[series] = true;
    diagram.nodes.push_back({series, 0});
    // The list of nodes is also the queue of those that are still to be left.
    for (std::size_t next = 0; next < diagram.nodes.size(); ++next) {
        check();
        const ImpactNode node = diagram.nodes[next];
        if (node.level >= level)
            break;
        for (const std::size_t number : direction == ImpactDirection::Effects
                                            ? network.effectsOf(node.series)
                                            : network.causesOf(node.series)) {
            diagram.edges.push_back(number);
            const std::size_t met = farEnd(network.edges()[number], direction);
            if (!isMet[met])
                diagram.nodes.push_back({met, node.level + 1});
            isMet[met] = true;
        }
    }
    return diagram;
}

} // namespace EmbeddedHV
