#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <ctime>
#include <stdexcept>

#include "components/temporal/explanation/ExplanationResults.h"
#include "components/temporal/explanation/ImpactDiagram.h"
#include "components/temporal/explanation/StatisticsDocument.h"
#include "temporal/ExplainedSamples.h"

// Networks and impact diagrams, against drawings by hand.

namespace TemporalTest {
namespace {

using namespace EmbeddedHV;

const StopCheck kGoOn = [] {};

std::string nodesOf(const ImpactDiagram& diagram)
{
    std::string text;
    for (const ImpactNode& node : diagram.nodes)
        text += (text.empty() ? "" : " ") + std::to_string(node.series) + "@" +
                std::to_string(node.level);
    return text;
}

std::string edgesOf(const CausalNetwork& network, const ImpactDiagram& diagram)
{
    std::string text;
    for (const std::size_t number : diagram.edges)
        text += (text.empty() ? "" : " ") + std::to_string(network.edges()[number].from) + ">" +
                std::to_string(network.edges()[number].to);
    return text;
}

TEST(CausalNetwork, TellsWhatAnEdgeDoes)
{
    const CausalNetwork network(sampleModel(), kGoOn);
    struct Expected
    {
        std::size_t from, to;
        int lag;
        double sum;
        int sign, terms;
    };
    const Expected expected[] = {{kSouthVisits, kNorthSales, 2, -0.25, -1, 2},
                                 {kSouthSales, kNorthSales, 1, 0.125, 1, 1},
                                 // Of two lags with coefficients of one size the first counts.
                                 {kNorthSales, kNorthVisits, 1, 1, 1, 2},
                                 {kNorthVisits, kSouthSales, 2, -0.25, -1, 2}};
    ASSERT_EQ(network.edges().size(), std::size(expected)) << "own pasts are no edges";
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        const CausalEdge& edge = network.edges()[i];
        SCOPED_TRACE(i);
        EXPECT_EQ(edge.from, expected[i].from);
        EXPECT_EQ(edge.to, expected[i].to);
        EXPECT_EQ(edge.lag, expected[i].lag);
        EXPECT_EQ(edge.sum, expected[i].sum);
        EXPECT_EQ(edge.sign(), expected[i].sign);
        // F k / (F k + 13) with F = 6.5.
        EXPECT_DOUBLE_EQ(edge.strength, std::sqrt(expected[i].terms == 2 ? 0.5 : 1.0 / 3));
    }
    ASSERT_TRUE(network.ownPastOf(kNorthSales));
    EXPECT_EQ(network.ownPastOf(kNorthSales)->sum, 0.25);
    EXPECT_FALSE(network.ownPastOf(kSouthVisits));
}

TEST(CausalNetwork, KnowsTheEndsOfStrength)
{
    const std::tuple<double, std::int64_t, double> cases[] = {
        {INFINITY, 18, 1}, {1e308, 18, 1}, {0, 18, 0}, {6.5, 5, NAN}};
    for (const auto& [statistic, observations, strength] : cases) {
        TcmModel model = modelOfEdges(2, {{0, 1}});
        model.equations[1].groups[0].fStatistic = statistic;
        model.equations[1].fit.observations = observations;
        const CausalNetwork network(model, kGoOn);
        const double found = network.edges()[0].strength;
        EXPECT_TRUE(std::isnan(strength) ? std::isnan(found) : found == strength)
            << statistic << " " << found;
    }
}

TEST(ImpactDiagram, GoesBreadthFirstToTheLevel)
{
    const CausalNetwork network(sampleModel(), kGoOn);
    const auto effects = ImpactDirection::Effects;
    const auto causes = ImpactDirection::Causes;
    const std::tuple<std::size_t, std::int64_t, ImpactDirection, const char*, const char*> cases[] =
        {
            {kNorthSales, 1, effects, "0@0 1@1", "0>1"},
            {kNorthSales, 2, effects, "0@0 1@1 2@2", "0>1 1>2"},
            {kNorthSales, 3, effects, "0@0 1@1 2@2", "0>1 1>2 2>0"},
            {kNorthSales, INT64_MAX, effects, "0@0 1@1 2@2", "0>1 1>2 2>0"},
            {kSouthVisits, 2, effects, "3@0 0@1 1@2", "3>0 0>1"},
            {kSouthVisits, 1, causes, "3@0", ""},
            {kNorthSales, 1, causes, "0@0 3@1 2@1", "3>0 2>0"},
            {kNorthSales, 2, causes, "0@0 3@1 2@1 1@2", "3>0 2>0 1>2"},
            {kNorthSales, 9, causes, "0@0 3@1 2@1 1@2", "3>0 2>0 1>2 0>1"},
        };
    for (const auto& [series, level, direction, nodes, edges] : cases) {
        SCOPED_TRACE(std::to_string(series) + " to level " + std::to_string(level));
        const ImpactDiagram diagram = impactDiagram(network, series, level, direction, kGoOn);
        EXPECT_EQ(nodesOf(diagram), nodes);
        EXPECT_EQ(edgesOf(network, diagram), edges);
    }
}

TEST(ImpactDiagram, DrawsACycleOnce)
{
    for (const std::size_t length : {1U, 2U, 3U, 17U, 300U, 5000U}) {
        SCOPED_TRACE(length);
        std::vector<std::pair<std::size_t, std::size_t>> edges;
        for (std::size_t i = 0; i < length; ++i)
            edges.emplace_back(i, (i + 1) % length);
        const CausalNetwork network(modelOfEdges(length, edges), kGoOn);
        for (const ImpactDirection direction :
             {ImpactDirection::Effects, ImpactDirection::Causes}) {
            const ImpactDiagram diagram =
                impactDiagram(network, length / 2, 1'000'000, direction, kGoOn);
            EXPECT_EQ(diagram.nodes.size(), length);
            // A series that only its own past moves has no edge.
            EXPECT_EQ(diagram.edges.size(), length == 1 ? 0 : length);
            EXPECT_EQ(diagram.nodes.back().level, static_cast<std::int64_t>(length) - 1);
        }
    }
}

/// Finds how much processor time passes at most from one check to the next, and can stop the work.
class CheckedTime
{
public:
    StopCheck check()
    {
        return [this] {
            const std::clock_t now = std::clock();
            longest = std::max(longest, now - _last);
            _last = now;
            if (++calls == stopsAt)
                throw std::runtime_error("stopped");
        };
    }

    std::clock_t longest = 0;
    int calls = 0;
    int stopsAt = -1;

private:
    std::clock_t _last = std::clock();
};

std::vector<ArtifactRequest> allRequests(std::size_t target)
{
    std::vector<ArtifactRequest> requests;
    for (const ArtifactKind kind :
         {ArtifactKind::ImpactEffects, ArtifactKind::ImpactCauses, ArtifactKind::RootCause})
        requests.push_back({kind, "", {target}, 1000});
    for (const ArtifactKind kind : {ArtifactKind::Network, ArtifactKind::Fit,
                                    ArtifactKind::Equations, ArtifactKind::Outliers})
        requests.push_back({kind, "", {}, 1});
    return requests;
}

/// Makes both documents of a model with everything that can be asked for, on data in which most
/// values are outliers.
void tellAll(const TcmModel& model, const StopCheck& check)
{
    const ModelData data(
        model, tableOf(model, 10 * Eigen::MatrixXd::Random(
                                       300, static_cast<Eigen::Index>(model.series.size()))));
    const TimeAxis axis;
    const PointLabels labels(axis, TimeOfDay::Seconds);
    const Explanation explanation({&model, &data, &labels, false, "test", check});
    statisticsDocument(explanation, allRequests(7));
    explanationResults(explanation, allRequests(7));
}

TEST(ImpactDiagram, StopsSoonInALargeModel)
{
#if defined(HV_SANITIZED)
    const TcmModel model = wideModel(60);
#elif defined(__OPTIMIZE__)
    const TcmModel model = wideModel(5000);
#else
    const TcmModel model = wideModel(250);
#endif
    CheckedTime time;
    tellAll(model, time.check());
#ifndef HV_SANITIZED
    EXPECT_LT(time.longest, CLOCKS_PER_SEC / 4);
#endif
    RecordProperty("longest_ms", static_cast<int>(time.longest * 1000 / CLOCKS_PER_SEC));
    CheckedTime stopped;
    stopped.stopsAt = time.calls / 2;
    EXPECT_THROW(tellAll(model, stopped.check()), std::runtime_error);
    EXPECT_EQ(stopped.calls, stopped.stopsAt);
}

} // namespace
} // namespace TemporalTest
