#include "components/temporal/explanation/ExplanationCharts.h"

#include <algorithm>
#include <cmath>

#include "components/result/ChartSpecification.h"
#include "components/result/ValueFormat.h"

namespace EmbeddedHV::explanation {
namespace {

/// More edges than this make no drawing clearer.
constexpr std::size_t kMostDrawnEdges = 2000;

Json edgeRow(const Explanation& explanation, const CausalEdge& edge)
{
    return {{"From", explanation.textOf(edge.from)},
            {"To", explanation.textOf(edge.to)},
            {"Lag", edge.lag},
            {"Sum", numberJson(edge.sum)},
            {"Sign", edge.sign()},
            {"Strength", numberJson(edge.strength)},
            {"Sig.", numberJson(edge.pValue)}};
}

Json field(const char* name)
{
    return {{"field", name}};
}

Json networkSpecification(Json title, const std::string& description, Json rows, Json nodes,
                          const char* layout)
{
    Json specification = chart::barSpecification(std::move(title), description, std::move(rows));
    specification["datasets"] = {{"nodes", std::move(nodes)}};
    specification["mark"] = {{"type", "network"}, {"layout", layout}};
    specification["encoding"] = {
        {"source", field("From")},
        {"target", field("To")},
        {"strength", field("Strength")},
        {"sign", field("Sign")},
        {"tooltip", Json::array({field("Lag"), field("Sum"), field("Strength"), field("Sig.")})}};
    return specification;
}

const char* kindOf(const Explanation& explanation, std::size_t place)
{
    return explanation.model().equationOf(place) ? "target" : "series";
}

/// The numbers of the edges to be drawn, the strongest first.
std::vector<std::size_t> strongest(const CausalNetwork& network)
{
    std::vector<std::size_t> numbers(network.edges().size());
    for (std::size_t i = 0; i < numbers.size(); ++i)
        numbers[i] = i;
    // A strength that is unknown comes last.
    const auto strength = [&](std::size_t number) {
        const double value = network.edges()[number].strength;
        return std::isnan(value) ? -1 : value;
    };
    std::stable_sort(numbers.begin(), numbers.end(),
                     [&](std::size_t a, std::size_t b) { return strength(a) > strength(b); });
    numbers.resize(std::min(numbers.size(), kMostDrawnEdges));
    return numbers;
}

Json networkTitle(std::size_t drawn, std::size_t all)
{
    if (drawn == all)
        return "Network of Series";
    return {{"text", "Network of Series"},
            {"subtitle",
             "The " + std::to_string(drawn) + " strongest of " + std::to_string(all) + " edges"}};
}

} // namespace

Json networkChart(const Explanation& explanation)
{
    const CausalNetwork& network = explanation.network();
    const std::vector<std::size_t> drawn = strongest(network);
    Json rows = Json::array();
    std::vector<bool> isDrawn(network.seriesCount(), false);
    for (const std::size_t number : drawn) {
        explanation.check();
        const CausalEdge& edge = network.edges()[number];
        rows.push_back(edgeRow(explanation, edge));
        isDrawn[edge.from] = isDrawn[edge.to] = true;
    }
    Json nodes = Json::array();
    for (std::size_t place = 0; place < network.seriesCount(); ++place)
        if (isDrawn[place] || drawn.size() == network.edges().size())
            nodes.push_back(
                {{"name", explanation.textOf(place)}, {"kind", kindOf(explanation, place)}});
    const std::string description = "Network of " + std::to_string(nodes.size()) + " series with " +
                                    std::to_string(drawn.size()) + " edges";
    return networkSpecification(networkTitle(drawn.size(), network.edges().size()), description,
                                std::move(rows), std::move(nodes), "force");
}

Json impactChart(const Explanation& explanation, const ImpactDiagram& diagram)
{
    const bool isEffects = diagram.direction == ImpactDirection::Effects;
    Json nodes = Json::array();
    for (const ImpactNode& node : diagram.nodes)
        nodes.push_back({{"name", explanation.textOf(node.series)},
                         {"kind", node.level == 0 ? "focus" : kindOf(explanation, node.series)},
                         {"level", isEffects ? node.level : -node.level}});
    Json rows = Json::array();
    for (const std::size_t number : diagram.edges) {
        explanation.check();
        rows.push_back(edgeRow(explanation, explanation.network().edges()[number]));
    }
    const std::string title = (isEffects ? "Effects of " : "Causes of ") +
                              explanation.textOf(diagram.nodes.front().series);
    const std::string description = title + ": " + std::to_string(nodes.size()) + " series with " +
                                    std::to_string(rows.size()) + " edges";
    return networkSpecification(title, description, std::move(rows), std::move(nodes), "levels");
}

} // namespace EmbeddedHV::explanation
