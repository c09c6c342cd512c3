#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numeric>

#include "components/temporal/explanation/DataOutliers.h"
#include "components/temporal/explanation/LatestChange.h"
#include "components/temporal/explanation/OutlierOrigin.h"
#include "temporal/ExplainedSamples.h"

// Where changes and outliers come from: the parts add up, and are those of a second computation.

namespace TemporalTest {
namespace {

using namespace EmbeddedHV;

constexpr Eigen::Index kPoints = 20;
const StopCheck kNoStop = [] {};

TEST(LatestChange, AddsUp)
{
    const TcmModel model = sampleModel();
    const Eigen::MatrixXd y = simulated(model, kPoints, ripple);
    const ModelData data(model, tableOf(model, y));
    const auto change = latestChange(data, *model.equationOf(kNorthSales));
    ASSERT_TRUE(change);
    EXPECT_EQ(change->timeIndex, kPoints - 1);
    EXPECT_EQ(change->change, y(19, kNorthSales) - y(18, kNorthSales));
    const double expected[] = {0.25 * (y(18, kNorthSales) - y(17, kNorthSales)),
                               0.5 * (y(18, kSouthVisits) - y(17, kSouthVisits)) -
                                   0.75 * (y(17, kSouthVisits) - y(16, kSouthVisits)),
                               0.125 * (y(18, kSouthSales) - y(17, kSouthSales))};
    ASSERT_EQ(change->contributions.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(change->contributions[i], expected[i], 1e-12) << i;
    // The simulation's shocks are the residuals.
    EXPECT_NEAR(change->unexplained, ripple(kNorthSales, 19) - ripple(kNorthSales, 18), 1e-12);
    EXPECT_NEAR(std::accumulate(change->contributions.begin(), change->contributions.end(),
                                change->unexplained),
                change->change, 1e-12);
}

TEST(LatestChange, KnowsWhatIsMissing)
{
    const TcmModel model = sampleModel();
    const SeriesEquation& equation = *model.equationOf(kNorthSales);
    Eigen::MatrixXd y = simulated(model, kPoints, ripple);
    y(19, kNorthSales) = y(17, kSouthSales) = std::nan("");
    const auto change = latestChange(ModelData(model, tableOf(model, y)), equation);
    ASSERT_TRUE(change);
    EXPECT_EQ(change->timeIndex, 18) << "the last change that is known";
    EXPECT_FALSE(std::isnan(change->contributions[1]));
    EXPECT_TRUE(std::isnan(change->contributions[2]));
    EXPECT_TRUE(std::isnan(change->unexplained));
    for (Eigen::Index point = 0; point < kPoints; point += 2)
        y(point, kNorthSales) = std::nan("");
    EXPECT_FALSE(latestChange(ModelData(model, tableOf(model, y)), equation));
    EXPECT_FALSE(latestChange(ModelData(model, {}), equation)) << "no point at all";
}

TEST(DataOutliers, AreBeyondTheQuantile)
{
    TcmModel model = sampleModel();
    model.outlierLevel = 0.99;
    // With 13 degrees of freedom the quantile at 0.995 is 3.012276.
    const auto shock = [](std::size_t series, Eigen::Index point) {
        if (series == kSouthSales && point == 9)
            return -2 * 3.0123;
        if (series == kNorthVisits && point == 12)
            return 2 * 3.0122;
        return series == kSouthVisits && point == 9 ? 1000.0 : 0.0;
    };
    for (SeriesEquation& equation : model.equations)
        equation.residualVariance = 4;
    const ModelData data(model, tableOf(model, simulated(model, kPoints, shock)));
    const std::vector<SeriesOutlier> outliers = outliersIn(model, data, kNoStop);
    ASSERT_EQ(outliers.size(), 1U) << "a series without an equation has no outliers";
    EXPECT_EQ(outliers[0].series, kSouthSales);
    EXPECT_EQ(outliers[0].timeIndex, 9);
    EXPECT_NEAR(outliers[0].actual - outliers[0].predicted, -6.0246, 1e-9);
    EXPECT_NEAR(outliers[0].pValue, 0.01, 1e-4);
    for (SeriesEquation& equation : model.equations)
        equation.residualVariance = 0;
    EXPECT_TRUE(outliersIn(model, data, kNoStop).empty()) << "a perfect fit has no scale";
}

TEST(DataOutliers, KeepsTheLeastLikelyInTheirOrder)
{
    std::vector<SeriesOutlier> all;
    for (const double pValue : {0.009, 0.001, 0.003, 0.001, 0.005, 0.003})
        all.push_back({0, static_cast<std::int64_t>(all.size()), 0, 0, pValue});
    const std::pair<std::size_t, std::vector<std::int64_t>> cases[] = {
        {0, {}}, {1, {1}}, {3, {1, 2, 3}}, {4, {1, 2, 3, 5}}, {6, {0, 1, 2, 3, 4, 5}}};
    for (const auto& [most, expected] : cases) {
        std::vector<std::int64_t> kept;
        for (const SeriesOutlier& outlier : leastLikely(all, most))
            kept.push_back(outlier.timeIndex);
        EXPECT_EQ(kept, expected) << most;
    }
}

/// All paths of lagged terms, one by one.
struct Paths
{
    const TcmModel& model;
    SeriesPoint from;
    double total = 0;
    double largest = 0;

    void walk(SeriesPoint at, double product)
    {
        if (at.timeIndex < from.timeIndex)
            return;
        if (at.series == from.series && at.timeIndex == from.timeIndex) {
            total += product;
            if (std::abs(product) > std::abs(largest))
                largest = product;
            return;
        }
        for (const LaggedTerm& term : moving(model, at.series).terms)
            walk({term.series, at.timeIndex - term.lag}, product * term.coefficient);
    }
};

double productOf(const TcmModel& model, const std::vector<SeriesPoint>& path)
{
    double product = 1;
    for (std::size_t i = 0; i + 1 < path.size(); ++i) {
        double coefficient = 0;
        for (const LaggedTerm& term : moving(model, path[i + 1].series).terms)
            if (term.series == path[i].series &&
                path[i + 1].timeIndex - path[i].timeIndex == term.lag)
                coefficient = term.coefficient;
        product *= coefficient;
    }
    return product;
}

/// A ripple, and a jump of south visits at point 10.
double planted(std::size_t series, Eigen::Index point)
{
    return ripple(series, point) / 10 + (series == kSouthVisits && point == 10 ? 40 : 0);
}

TEST(OutlierOrigin, FindsThePlantedCause)
{
    const TcmModel model = sampleModel();
    const Eigen::MatrixXd y = simulated(model, kPoints, planted);
    const ModelData data(model, tableOf(model, y));
    const ResidualSource residuals = [&](const SeriesEquation& equation, std::int64_t index) {
        return data.residual(equation, index);
    };
    const SeriesPoint outlier{kSouthSales, 15};
    const OutlierOrigin origin = originOf(model, residuals, outlier, 3, 1000, kNoStop);
    EXPECT_EQ(origin.firstIndex, 9) << "three times two lags back";
    EXPECT_NEAR(origin.residual, planted(kSouthSales, 15), 1e-9);
    ASSERT_FALSE(origin.shocks.empty());
    const OriginShock& cause = origin.shocks.front();
    EXPECT_EQ(cause.at.series, kSouthVisits);
    EXPECT_EQ(cause.at.timeIndex, 10);
    EXPECT_NEAR(cause.residual, planted(kSouthVisits, 10), 1e-9);
    EXPECT_EQ(cause.path.back().series, kSouthSales);
    // What the value would be without the jump.
    const Eigen::MatrixXd without =
        simulated(model, kPoints, [](std::size_t series, Eigen::Index point) {
            return series == kSouthVisits && point == 10 ? 0 : planted(series, point);
        });
    EXPECT_NEAR(cause.contribution, y(15, kSouthSales) - without(15, kSouthSales), 1e-9);
    // What the system forecasts from the data up to point 8.
    Eigen::MatrixXd forecast = simulated(model, 16, [&](std::size_t series, Eigen::Index point) {
        return point < 9 ? planted(series, point) : 0;
    });
    EXPECT_NEAR(origin.departure, y(15, kSouthSales) - forecast(15, kSouthSales), 1e-9);
    double sum = origin.residual + origin.others;
    for (const OriginShock& shock : origin.shocks) {
        sum += shock.contribution;
        Paths paths{model, shock.at};
        paths.walk(outlier, 1);
        EXPECT_NEAR(shock.contribution, paths.total * shock.residual, 1e-12);
        EXPECT_NEAR(shock.pathContribution, paths.largest * shock.residual, 1e-12);
        EXPECT_NEAR(productOf(model, shock.path) * shock.residual, shock.pathContribution, 1e-12);
    }
    EXPECT_NEAR(sum, origin.departure, 1e-9);
    const OutlierOrigin few = originOf(model, residuals, outlier, 3, 2, kNoStop);
    EXPECT_EQ(few.shocks.size(), 2U);
    EXPECT_NEAR(few.residual + few.shocks[0].contribution + few.shocks[1].contribution + few.others,
                origin.departure, 1e-9);
}

TEST(OutlierOrigin, StaysWithinItsBounds)
{
    const TcmModel model = sampleModel();
    const std::int64_t points = 600;
    const ModelData data(model, tableOf(model, simulated(model, points, ripple)));
    const ResidualSource residuals = [&](const SeriesEquation& equation, std::int64_t index) {
        return data.residual(equation, index);
    };
    const std::tuple<std::int64_t, std::int64_t, std::int64_t> cases[] = {
        {500, 1, 498}, {500, INT64_MAX, 500 - kMostPointsBack}, {5, 1000, 0}, {0, 1, 0}};
    for (const auto& [index, level, first] : cases)
        EXPECT_EQ(originOf(model, residuals, {kNorthSales, index}, level, 5, kNoStop).firstIndex,
                  first);
    // The first residuals are unknown, since values before the data are.
    EXPECT_TRUE(std::isnan(originOf(model, residuals, {kNorthSales, 4}, 9, 5, kNoStop).departure));
}

} // namespace
} // namespace TemporalTest
