#include <cmath>

#include "components/result/ValueFormat.h"
#include "components/temporal/explanation/ImpactDiagram.h"
#include "components/temporal/explanation/StatisticsJson.h"

namespace EmbeddedHV::statistics {
namespace {

/// The contributions that a drawing lists besides those of its edges.
struct UndrawnContributions
{
    double ownPast = 0;
    double otherCauses = 0; ///< of predictors whose edges are not drawn
};

UndrawnContributions undrawn(const Explanation& explanation, std::size_t place,
                             const LatestChange& change, const std::vector<bool>& isDrawn)
{
    UndrawnContributions sums;
    if (const CausalEdge* own = explanation.network().ownPastOf(place))
        sums.ownPast = change.contributions[own->group];
    for (const std::size_t number : explanation.network().causesOf(place))
        if (!isDrawn[number])
            sums.otherCauses += change.contributions[explanation.network().edges()[number].group];
    return sums;
}

/// change = ownPast + the contributions of the drawn edges that end here + otherCauses +
/// unexplained.
Json changeObject(const Explanation& explanation, std::size_t place, const LatestChange& change,
                  const std::vector<bool>& isDrawn)
{
    const UndrawnContributions sums = undrawn(explanation, place, change, isDrawn);
    return {{"timeIndex", change.timeIndex},
            {"time", explanation.labels().json(change.timeIndex)},
            {"change", numberJson(change.change)},
            {"ownPast", numberJson(sums.ownPast)},
            {"otherCauses", numberJson(sums.otherCauses)},
            {"unexplained", numberJson(change.unexplained)}};
}

std::vector<bool> drawnEdges(const Explanation& explanation, const ImpactDiagram& diagram)
{
    std::vector<bool> isDrawn(explanation.network().edges().size(), false);
    for (const std::size_t number : diagram.edges)
        isDrawn[number] = true;
    return isDrawn;
}

void addNodes(ArtifactText& text, const Explanation& explanation, const ImpactDiagram& diagram)
{
    const std::vector<bool> isDrawn = drawnEdges(explanation, diagram);
    text.startList("nodes");
    for (const ImpactNode& met : diagram.nodes) {
        explanation.check();
        Json node = nodeObject(explanation, met.series);
        node["level"] = met.level;
        if (const LatestChange* change = explanation.latestChangeOf(met.series))
            node["latestChange"] = changeObject(explanation, met.series, *change, isDrawn);
        text.addElement(node);
    }
    text.endList();
}

void addEdges(ArtifactText& text, const Explanation& explanation, const ImpactDiagram& diagram)
{
    text.startList("edges");
    for (const std::size_t number : diagram.edges) {
        explanation.check();
        const CausalEdge& edge = explanation.network().edges()[number];
        Json object = edgeObject(explanation, edge);
        if (explanation.data())
            object["contribution"] = optionalNumber(explanation.contributionOf(edge));
        text.addElement(object);
    }
    text.endList();
}

} // namespace

void addImpact(ArtifactText& text, const Explanation& explanation, const ArtifactRequest& request,
               std::size_t target)
{
    const ImpactDiagram diagram =
        impactDiagram(explanation.network(), target, request.level,
                      request.kind == ArtifactKind::ImpactEffects ? ImpactDirection::Effects
                                                                  : ImpactDirection::Causes,
                      [&] { explanation.check(); });
    addNodes(text, explanation, diagram);
    addEdges(text, explanation, diagram);
}

} // namespace EmbeddedHV::statistics
