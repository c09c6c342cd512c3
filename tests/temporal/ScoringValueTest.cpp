#include "temporal/ScoringSamples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <random>

#include <Eigen/Dense>

#include "JobError.h"

using namespace EmbeddedHV;
using namespace ScoringTest;
using testing::HasSubstr;

namespace {

constexpr double kNormalQuantile = 1.959963984540054; ///< of 0.975

Scores scored(const TcmModel& model, const SeriesTable& table, const ScoringRequest& request)
{
    return score(model, table, request, "test", [] {});
}

std::string faultOfScoring(const TcmModel& model, const SeriesTable& table,
                           const ScoringRequest& request)
{
    try {
        scored(model, table, request);
    } catch (const JobError& error) {
        return error.id() + " " + error.what();
    }
    return "none";
}

/// The series y of twoSeries, with a forecast of three points.
ScoringRequest forecastOfY()
{
    ScoringRequest request;
    request.series = {1};
    request.span = 3;
    return request;
}

/// Missing values are equal to each other.
void expectValues(const Eigen::VectorXd& values, const std::vector<double>& expected,
                  double tolerance = 1e-12)
{
    ASSERT_EQ(values.size(), static_cast<Eigen::Index>(expected.size()));
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const double value = values(static_cast<Eigen::Index>(i));
        if (std::isnan(expected[i])) {
            EXPECT_TRUE(std::isnan(value)) << i << ": " << value;
            continue;
        }
        EXPECT_NEAR(value, expected[i], tolerance * std::max(1.0, std::abs(expected[i]))) << i;
    }
}

/// The standard deviations of the errors beyond the data that the bounds show.
Eigen::VectorXd deviationsAhead(const SeriesScores& scores, Eigen::Index records)
{
    const Eigen::VectorXd width = scores.upper - scores.lower;
    return width.tail(width.size() - records) / (2 * kNormalQuantile);
}

TEST(ScoringValueTest, ValuesAreThoseOfTheEquationsByHand)
{
    const Scores scores = scored(twoSeries(), twoSeriesData(), forecastOfY());
    EXPECT_EQ(scores.firstIndex, 0);
    EXPECT_EQ(scores.records, 3);
    ASSERT_EQ(scores.series.size(), 1U);
    const SeriesScores& y = scores.series[0];
    expectValues(y.actual, {10, 20, 30, kNone, kNone, kNone});
    // 2 + 0.4 * 20 + 3 * 2 - 4; then x goes on with 4 and 3.
    expectValues(y.predicted, {kNone, kNone, 12, 30, 20, 15});
    // At the second point also 0.4 of y's first innovation and 3 of x's, which are correlated.
    EXPECT_NEAR(y.upper(2) - y.predicted(2), kNormalQuantile * 2, 1e-9);
    expectValues(deviationsAhead(y, 3).head(2), {2, std::sqrt(4 + 0.64 + 2.25 + 1.2)}, 1e-9);
    EXPECT_NEAR(y.predicted(4) - y.lower(4), y.upper(4) - y.predicted(4), 1e-12);
}

TEST(ScoringValueTest, EachPartIsGivenOnlyWhereItIsAskedFor)
{
    ScoringRequest request = forecastOfY();
    request.fits = false;
    expectValues(scored(twoSeries(), twoSeriesData(), request).series[0].predicted,
                 {kNone, kNone, kNone, 30, 20, 15});
    request.fits = true;
    request.span = 0;
    expectValues(scored(twoSeries(), twoSeriesData(), request).series[0].predicted,
                 {kNone, kNone, 12});
    request.span = 1;
    request.confidenceLevel = 0.5;
    const Scores half = scored(twoSeries(), twoSeriesData(), request);
    EXPECT_NEAR(half.series[0].upper(3) - 30, 0.6744897501960817 * 2, 1e-9);
}

TEST(ScoringValueTest, AScenarioActsThroughTheEquations)
{
    ScenarioValue value;
    value.series = 0;
    struct Case
    {
        std::function<void(ScenarioValue&)> set;
        std::vector<double> predicted;
    };
    const Case cases[] = {
        // x is 10, then 6.
        {[](ScenarioValue& v) { v.ahead = 1, v.value = 10; }, {30, 38, 25.2}},
        {[](ScenarioValue& v) { v.timeIndex = 3, v.value = 10; }, {30, 38, 25.2}},
        // x is 8 and 6, twice what it was without the scenario.
        {[](ScenarioValue& v) { v.change = 1; }, {30, 32, 24.8}},
        // y itself.
        {[](ScenarioValue& v) { v.series = 1, v.ahead = 2, v.value = 5; }, {30, 5, 9}},
    };
    for (const Case& each : cases) {
        ScoringRequest request = forecastOfY();
        request.scenario = {value};
        each.set(request.scenario[0]);
        const Scores scores = scored(twoSeries(), twoSeriesData(), request);
        expectValues(scores.series[0].predicted.tail(3), each.predicted);
        EXPECT_TRUE(scores.remarks.empty());
    }
}

TEST(ScoringValueTest, WhatAScenarioSetsHasNoError)
{
    ScoringRequest request = forecastOfY();
    ScenarioValue x;
    x.value = 10;
    request.scenario = {x};
    const SeriesScores y = scored(twoSeries(), twoSeriesData(), request).series[0];
    // The past of y alone is left: 4 (1 + 0.4^2 + 0.4^4).
    expectValues(deviationsAhead(y, 3), {2, 2 * std::sqrt(1.16), 2 * std::sqrt(1.16 + 0.0256)},
                 1e-9);
    request.scenario[0].series = 1;
    const SeriesScores set = scored(twoSeries(), twoSeriesData(), request).series[0];
    expectValues(set.lower.tail(3), {10, 10, 10});
    expectValues(set.upper.tail(3), {10, 10, 10});
}

TEST(ScoringValueTest, ErrorsOfAnAutoregressionHaveTheirClosedForm)
{
    ScoringRequest request = forecastOfY();
    request.by = PredictedBy::OwnPast;
    request.span = 40;
    const SeriesScores y = scored(twoSeries(), twoSeriesData(), request).series[0];
    expectValues(y.predicted.head(6), {kNone, 9, 14, 19, 13.5, 10.75});
    std::vector<double> expected;
    for (int ahead = 1; ahead <= 40; ++ahead)
        expected.push_back(3 * std::sqrt((1 - std::pow(0.25, ahead)) / (1 - 0.25)));
    expectValues(deviationsAhead(y, 3), expected, 1e-9);
}

/// A model of three series without an intercept, all of them targets, with residuals of 50 points.
TcmModel threeSeries(const std::vector<Eigen::Matrix3d>& lags)
{
    std::mt19937_64 random(7);
    std::normal_distribution<double> normal;
    Eigen::Matrix3d mixed;
    mixed << 1, 0, 0, 0.8, 0.6, 0, -0.5, 0.3, 2;
    Eigen::MatrixXd residuals(50, 3);
    for (Eigen::Index row = 0; row < 50; ++row)
        residuals.row(row) =
            (mixed * Eigen::Vector3d::NullaryExpr([&] { return normal(random); })).transpose();
    TcmModel model;
    model.lags = static_cast<int>(lags.size());
    model.trainingPoints = 50;
    model.lastValues = Eigen::MatrixXd::Zero(model.lags, 3);
    for (std::size_t i = 0; i < 3; ++i) {
        std::vector<std::tuple<std::size_t, int, double>> terms;
        for (std::size_t j = 0; j < 3; ++j)
            for (std::size_t lag = 0; lag < lags.size(); ++lag)
                if (lags[lag](static_cast<int>(i), static_cast<int>(j)) != 0)
                    terms.emplace_back(j, static_cast<int>(lag) + 1,
                                       lags[lag](static_cast<int>(i), static_cast<int>(j)));
        const auto column = residuals.col(static_cast<int>(i));
        model.series.push_back(
            {std::to_string(i + 1), {std::string(1, static_cast<char>('a' + i))}, true, true});
        model.equations.push_back(
            equation(i, 0, terms, column.squaredNorm() / 40, {column.begin(), column.end()}));
    }
    return model;
}

/// The covariance of the innovations of threeSeries.
Eigen::Matrix3d covarianceOf(const TcmModel& model)
{
    Eigen::MatrixXd residuals(50, 3);
    for (int i = 0; i < 3; ++i)
        residuals.col(i) = Eigen::Map<const Eigen::VectorXd>(
            model.equations[static_cast<std::size_t>(i)].residuals.data(), 50);
    return residuals.transpose() * residuals / 40;
}

TEST(ScoringValueTest, ErrorsOfAVectorAutoregressionHaveTheirClosedForm)
{
    Eigen::Matrix3d first;
    first << 0.5, 0.2, 0, -0.3, 0.4, 0.1, 0, 0.6, 0.3;
    const TcmModel model = threeSeries({first});
    ScoringRequest request;
    request.series = {0, 1, 2};
    request.span = 12;
    const SeriesTable table{40, {"3", "1", "2"}, Eigen::MatrixXd::Random(10, 3)};
    const Scores scores = scored(model, table, request);
    Eigen::Matrix3d power = Eigen::Matrix3d::Identity();
    Eigen::Matrix3d sum = Eigen::Matrix3d::Zero();
    for (int ahead = 0; ahead < 12; ++ahead) {
        sum += power * covarianceOf(model) * power.transpose();
        power = first * power;
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(deviationsAhead(scores.series[static_cast<std::size_t>(i)], 10)(ahead),
                        std::sqrt(sum(i, i)), 1e-8);
    }
}

TEST(ScoringValueTest, BoundsAreThoseOfASimulation)
{
    Eigen::Matrix3d first;
    first << 0.5, 0.2, 0, -0.3, 0.4, 0.1, 0, 0.6, 0.3;
    Eigen::Matrix3d second;
    second << 0.1, 0, 0.2, 0, -0.2, 0, 0.3, 0, -0.1;
    const TcmModel model = threeSeries({first, second});
    // The last two values of c are missing, and the scenario sets b at the second point ahead.
    SeriesTable table{40, {"1", "2", "3"}, Eigen::MatrixXd::Random(8, 3)};
    table.values.col(2).tail(2).setConstant(kNone);
    ScoringRequest request;
    request.series = {0, 1, 2};
    request.span = 6;
    ScenarioValue set;
    set.series = 1;
    set.ahead = 2;
    set.value = 3;
    request.scenario = {set};
    const Scores scores = scored(model, table, request);

    // Paths of a fixed seed: a deviation has an error of 0.32 %, so 1.5 % is ample.
    constexpr int kPaths = 50000;
    std::mt19937_64 random(11);
    std::normal_distribution<double> normal;
    const Eigen::Matrix3d root = covarianceOf(model).llt().matrixL();
    Eigen::MatrixXd sums = Eigen::MatrixXd::Zero(3, 8);
    Eigen::MatrixXd squares = sums;
    for (int path = 0; path < kPaths; ++path) {
        Eigen::MatrixXd values = Eigen::MatrixXd::Zero(3, 14);
        values.leftCols(8) = table.values.transpose();
        for (int t = 6; t < 14; ++t) {
            const Eigen::Vector3d noise =
                root * Eigen::Vector3d::NullaryExpr([&] { return normal(random); });
            Eigen::Vector3d next = first * values.col(t - 1) + second * values.col(t - 2) + noise;
            sums.col(t - 6) += next;
            squares.col(t - 6) += next.cwiseAbs2();
            if (t < 8)
                next.head(2) = table.values.row(t).head(2).transpose();
            if (t == 9)
                next(1) = 3;
            values.col(t) = next;
        }
    }
    for (int i = 0; i < 3; ++i)
        for (int t = 0; t < 8; ++t) {
            const SeriesScores& series = scores.series[static_cast<std::size_t>(i)];
            const double mean = sums(i, t) / kPaths;
            double deviation = std::sqrt(squares(i, t) / kPaths - mean * mean);
            double middle = mean;
            if (i == 1 && t == 3) {
                deviation = 0;
                middle = 3;
            }
            const double bound = (series.upper(t + 6) - series.lower(t + 6)) / 2 / kNormalQuantile;
            EXPECT_NEAR(bound, deviation, 0.015 * deviation) << i << " at " << t;
            EXPECT_NEAR(series.predicted(t + 6), middle, 0.02 * (0.1 + deviation))
                << i << " at " << t;
        }
}

TEST(ScoringValueTest, MissingValuesAreBridgedOnlyAtTheEnd)
{
    struct Case
    {
        const char* what;
        SeriesTable table;
        std::vector<double> predicted; ///< of y, with a forecast of one point
    };
    const auto table = [](std::int64_t first, Eigen::MatrixXd values) {
        return SeriesTable{first, {"1", "2"}, values.transpose()};
    };
    const Case cases[] = {
        {"a gap in x: no prediction needs it but the next two; behind the data it is bridged, by 3",
         table(0, (Eigen::MatrixXd(2, 4) << 4, kNone, 6, 2, 10, 20, 30, 40).finished()),
         {kNone, kNone, kNone, kNone, 18}},
        {"a gap in x next to the end: its prediction, 3, takes its place",
         table(0, (Eigen::MatrixXd(2, 3) << 4, kNone, 6, 10, 20, 30).finished()),
         {kNone, kNone, kNone, 29}},
        {"x ends before y: it goes on with 2, which its last record needs, and 2",
         table(0, (Eigen::MatrixXd(2, 4) << 4, 2, kNone, kNone, 10, 20, 30, 40).finished()),
         {kNone, kNone, 12, 18, 22}},
        {"y ends before x: its last value is predicted, 12, and goes on",
         table(0, (Eigen::MatrixXd(2, 3) << 4, 2, 6, 10, 20, kNone).finished()),
         {kNone, kNone, 12, 22.8}},
        {"x begins late: before its first value are those of the training, 2 at the second point",
         table(0, (Eigen::MatrixXd(2, 3) << kNone, kNone, 6, 10, 20, 30).finished()),
         {kNone, kNone, kNone, 30}},
        {"one record, the first of the training", table(0, Eigen::Vector2d(4, 10)), {kNone, kNone}},
        {"one record behind the training goes on from its end",
         table(3, Eigen::Vector2d(8, 1)),
         {30, 2 + 0.4 + 24 - 6}},
        {"a record a point later: the point between is a gap, and bridged behind the data, x by 4",
         table(4, Eigen::Vector2d(8, 1)),
         {kNone, 2 + 0.4 + 24 - 4}},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.what);
        ScoringRequest request = forecastOfY();
        request.span = 1;
        const Scores scores = scored(twoSeries(), each.table, request);
        expectValues(scores.series[0].predicted, each.predicted);
        expectValues(scores.series[0].actual.head(each.table.values.rows()),
                     {each.table.values.col(1).begin(), each.table.values.col(1).end()});
        EXPECT_TRUE(scores.remarks.empty());
    }
}

TEST(ScoringValueTest, ASeriesWithoutAnyValueGoesOnFromTheTraining)
{
    SeriesTable table = twoSeriesData();
    table.values.col(0).setConstant(kNone);
    ScoringRequest request = forecastOfY();
    const Scores scores = scored(twoSeries(), table, request);
    // The last values of x in the training are 2 and 6.
    expectValues(scores.series[0].predicted, {kNone, kNone, kNone, 30, 20, 15});
    ASSERT_EQ(scores.remarks.size(), 1U);
    EXPECT_THAT(scores.remarks[0].what, HasSubstr("no value of the series \"x\"; it goes on from"));
}

TEST(ScoringValueTest, OnlyAncestorsAreNeeded)
{
    ScoringRequest request;
    request.series = {0};
    request.span = 1;
    const SeriesTable onlyX{0, {"1"}, Eigen::Vector3d(4, 2, 6)};
    expectValues(scored(twoSeries(), onlyX, request).series[0].predicted, {kNone, 3, 2, 4});
    EXPECT_THAT(faultOfScoring(twoSeries(), onlyX, forecastOfY()), HasSubstr("HVETC0041E"));
    const SeriesTable onlyY{0, {"2"}, Eigen::Vector3d(10, 20, 30)};
    EXPECT_THAT(faultOfScoring(twoSeries(), onlyY, forecastOfY()),
                HasSubstr("no field \"1\" for the series \"x\""));
    request.series = {1};
    request.by = PredictedBy::OwnPast;
    expectValues(scored(twoSeries(), onlyY, request).series[0].predicted, {kNone, 9, 14, 19});
}

TEST(ScoringValueTest, WhatCannotBeComputedIsRefused)
{
    const auto with = [](const std::function<void(TcmModel&, SeriesTable&, ScoringRequest&)>& set) {
        TcmModel model = twoSeries();
        SeriesTable table = twoSeriesData();
        ScoringRequest request = forecastOfY();
        set(model, table, request);
        return faultOfScoring(model, table, request);
    };
    using Change = std::function<void(TcmModel&, SeriesTable&, ScoringRequest&)>;
    const auto scenario = [](std::optional<std::int64_t> ahead,
                             std::optional<std::int64_t> timeIndex, std::size_t values = 1) {
        return Change([=](auto&, auto&, auto& request) {
            request.scenario.resize(values);
            for (ScenarioValue& set : request.scenario)
                set.value = 1;
            request.scenario[0].ahead = ahead;
            request.scenario[0].timeIndex = timeIndex;
        });
    };
    const std::pair<Change, const char*> cases[] = {
        {[](auto& model, auto&, auto&) { model.autoregressions.clear(); },
         "HVETC0040E test: the model has no equation for the series \"x\""},
        {[](auto&, auto& table, auto&) { table.values.resize(0, 2); }, "HVETC0042E"},
        {[](auto&, auto& table, auto&) { table.firstIndex = INT64_MIN; }, "is out of range"},
        {[](auto&, auto&, auto& request) { request.refits = true; },
         "1 points of time have all its values, which do not determine its 4 coefficients"},
        {scenario(4, {}), "at point 4 of the forecast, but the forecast has the points 1 to 3"},
        {scenario({}, 2), "at the time index 2, but the forecast has the points 3 to 5"},
        {scenario({}, 4, 2), "twice at point 2 of the forecast"},
        {scenario(INT64_MIN, {}), "HVETC0044E"},
    };
    for (const auto& [change, fault] : cases)
        EXPECT_THAT(with(change), HasSubstr(fault));
}

TEST(ScoringValueTest, AScenarioWithoutEffectIsReported)
{
    ScoringRequest request;
    request.series = {0};
    request.span = 2;
    ScenarioValue set;
    set.series = 1;
    set.value = 1;
    request.scenario = {set};
    const Scores scores = scored(twoSeries(), twoSeriesData(), request);
    ASSERT_EQ(scores.remarks.size(), 1U);
    EXPECT_THAT(scores.remarks[0].what, HasSubstr("\"y\", on which no series asked for depends"));
}

TEST(ScoringValueTest, ARefitFindsTheCoefficientsOfTheRecords)
{
    // What the records follow: x[t] = 3 - 0.2 x[t-1] + noise, y exactly by its other equation.
    std::mt19937_64 random(3);
    std::normal_distribution<double> normal;
    SeriesTable table{5, {"1", "2"}, Eigen::MatrixXd(40, 2)};
    for (int t = 0; t < 40; ++t) {
        table.values(t, 0) = t < 2 ? t : 3 - 0.2 * table.values(t - 1, 0) + normal(random);
        table.values(t, 1) = t < 2 ? 5
                                   : 7 - 0.5 * table.values(t - 1, 1) + 2 * table.values(t - 1, 0) +
                                         1e3 * table.values(t - 2, 0);
    }
    // The two points that need it count for nothing.
    table.values(20, 0) = kNone;
    ScoringRequest request = forecastOfY();
    request.series = {1, 0};
    request.refits = true;
    const Scores scores = scored(twoSeries(), table, request);
    for (int t = 2; t < 40; ++t) {
        if (t == 21 || t == 22)
            continue;
        EXPECT_NEAR(scores.series[0].predicted(t), table.values(t, 1), 1e-7) << t;
    }
    // y has no error of its own; that of x reaches it.
    const Eigen::VectorXd deviations = deviationsAhead(scores.series[0], 40);
    EXPECT_NEAR(deviations(0), 0, 1e-7);
    EXPECT_NEAR(deviations(1), 2 * deviationsAhead(scores.series[1], 40)(0), 1e-7);
    // The normal equations of x, by themselves.
    Eigen::MatrixXd left(37, 2);
    Eigen::VectorXd right(37);
    for (int t = 1, row = 0; t < 40; ++t)
        if (t != 20 && t != 21) {
            left.row(row) << 1, table.values(t - 1, 0);
            right(row++) = table.values(t, 0);
        }
    const Eigen::Vector2d solution =
        (left.transpose() * left).ldlt().solve(left.transpose() * right);
    EXPECT_NEAR(scores.series[1].predicted(40), solution(0) + solution(1) * table.values(39, 0),
                1e-9);
    EXPECT_NEAR(deviationsAhead(scores.series[1], 40)(0),
                std::sqrt((right - left * solution).squaredNorm() / 35), 1e-9);
}

TEST(ScoringValueTest, WhatGrowsBeyondAllNumbersIsMissing)
{
    TcmModel model = twoSeries();
    model.equations[0].terms[0].coefficient = 1e200;
    const SeriesScores y = scored(model, twoSeriesData(), forecastOfY()).series[0];
    EXPECT_TRUE(std::isfinite(y.predicted(3)));
    EXPECT_TRUE(std::isnan(y.predicted(4)));
    EXPECT_TRUE(std::isnan(y.upper(4)));
    EXPECT_TRUE(std::isnan(y.predicted(5)));
}

TEST(ScoringValueTest, ScoringStopsWhenItIsTold)
{
    // A random walk, and a scenario at the end of a long forecast: each point's errors are carried
    // through all the others.
    TcmModel model = twoSeries();
    model.autoregressions[0] = equation(0, 0, {{0, 1, 1}}, 1, {kNone, 1, 1});
    ScoringRequest request;
    request.series = {0};
    request.span = kLongestForecast;
    ScenarioValue set;
    set.ahead = kLongestForecast;
    set.value = 1;
    request.scenario = {set};
    int calls = 0;
    EXPECT_THROW(score(model, twoSeriesData(), request, "test",
                       [&] {
                           if (++calls == 100000)
                               throw JobError("id", "stopped");
                       }),
                 JobError);
}

} // namespace
