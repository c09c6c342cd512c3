#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

#include <Eigen/Dense>

#include "components/statistics/Distributions.h"
#include "components/temporal/model/ModelDocument.h"
#include "components/temporal/training/FitMeasures.h"
#include "temporal/TrainingData.h"

using namespace TemporalTest;
using namespace EmbeddedHV;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

constexpr double kMissing = std::numeric_limits<double>::quiet_NaN();

using Long = Eigen::Matrix<long double, Eigen::Dynamic, Eigen::Dynamic>;

/// A regression by normal equations in long doubles: slow, plain and independent.
struct Exact
{
    Exact(const Eigen::MatrixXd& values, const SeriesEquation& equation, int lags,
          std::size_t without = SIZE_MAX)
    {
        const Eigen::Index rows = values.rows() - lags;
        std::vector<const LaggedTerm*> terms;
        for (const LaggedTerm& term : equation.terms)
            if (term.series != without)
                terms.push_back(&term);
        Long design = Long::Ones(rows, static_cast<Eigen::Index>(terms.size()) + 1);
        for (std::size_t i = 0; i < terms.size(); ++i)
            design.col(static_cast<Eigen::Index>(i) + 1) =
                values.col(static_cast<Eigen::Index>(terms[i]->series))
                    .segment(lags - terms[i]->lag, rows)
                    .cast<long double>();
        const Long target =
            values.col(static_cast<Eigen::Index>(equation.series)).tail(rows).cast<long double>();
        const Long inverse = (design.transpose() * design).inverse();
        coefficients = inverse * (design.transpose() * target);
        squares = (target - design * coefficients).squaredNorm();
        const long double variance = squares / static_cast<long double>(rows - coefficients.rows());
        errors = (inverse.diagonal() * variance).cwiseSqrt();
        degrees = rows - coefficients.rows();
    }

    Long coefficients; ///< the intercept first
    Long errors;
    long double squares;
    Eigen::Index degrees;
};

void expectNear(double actual, long double expected, const std::string& what)
{
    EXPECT_NEAR(actual, static_cast<double>(expected),
                1e-10 * std::max(1.0, std::abs(static_cast<double>(expected))))
        << what;
}

/// b follows a with lag 2, c follows b with lag 1, and the rest is noise with its own past.
Eigen::MatrixXd knownSystem(Eigen::Index points)
{
    const Eigen::MatrixXd shocks = noise(points, 6, 11);
    Eigen::MatrixXd values = shocks.array() - 5;
    for (Eigen::Index t = 2; t < points; ++t) {
        for (Eigen::Index i = 0; i < 6; ++i)
            values(t, i) += 0.4 * values(t - 1, i);
        values(t, 1) += 0.8 * values(t - 2, 0);
        values(t, 2) -= 0.7 * values(t - 1, 1);
    }
    return values;
}

TEST(Training, EquationsAreThoseOfLeastSquares)
{
    Eigen::MatrixXd values = noise(60, 3, 1);
    values.col(1) *= 1e3;
    values.col(2).array() += 50;
    TrainingOptions options = everySeries(3);
    options.lags = 2;
    options.forced = {{1, 0}, {2, 0}, {0, 1}};
    const Trained trained = train(values, options);
    ASSERT_EQ(trained.error, "");
    ASSERT_EQ(trained.model.equations.size(), 3U);
    for (const SeriesEquation& equation : trained.model.equations) {
        const Exact exact(values, equation, 2);
        expectNear(equation.intercept, exact.coefficients(0), "intercept");
        expectNear(equation.interceptStandardError, exact.errors(0), "its error");
        expectNear(equation.fit.residualSumOfSquares, exact.squares, "squares");
        for (std::size_t i = 0; i < equation.terms.size(); ++i) {
            const auto at = static_cast<Eigen::Index>(i) + 1;
            expectNear(equation.terms[i].coefficient, exact.coefficients(at), "coefficient");
            expectNear(equation.terms[i].standardError, exact.errors(at), "error");
        }
        for (const PredictorGroup& group : equation.groups) {
            const Exact without(values, equation, 2, group.series);
            const long double f = (without.squares - exact.squares) / 2 /
                                  (exact.squares / static_cast<long double>(exact.degrees));
            expectNear(group.fStatistic, f, "F");
        }
    }
}

TEST(Training, FindsTheEquationsThatMadeTheSeries)
{
    TrainingOptions options = everySeries(6);
    const Trained trained = train(knownSystem(400), options);
    EXPECT_EQ(trained.edges(), "a>b b>c");
    EXPECT_EQ(trained.model.lags, 2);
    EXPECT_TRUE(trained.messages.empty());
    // Whether the lags are chosen or given, the model is the same, and it is each time.
    options.lags = 2;
    const Trained again = train(knownSystem(400), options);
    EXPECT_EQ(modelDocument(again.model), modelDocument(trained.model));
}

TEST(Training, RolesAndPairsLimitTheEdges)
{
    struct Case
    {
        const char* edges;
        std::function<void(TrainingOptions&)> change;
    };
    const Case cases[] = {
        {"b>c", [](TrainingOptions& options) { options.isCandidate[0] = false; }},
        {"a>b", [](TrainingOptions& options) { options.isTarget[2] = false; }},
        {"b>c",
         [](TrainingOptions& options) {
             options.forbidden = {{0, 1}};
         }},
        {"a>b b>c e>a",
         [](TrainingOptions& options) {
             options.forced = {{4, 0}};
         }},
        // What is forced counts among the predictors, and comes before those chosen.
        {"a>b d>c",
         [](TrainingOptions& options) {
             options.maxPredictors = 1;
             options.forced = {{3, 2}};
         }},
        {"", [](TrainingOptions& options) { options.maxPredictors = 0; }},
    };
    for (const Case& one : cases) {
        TrainingOptions options = everySeries(6);
        options.lags = 2;
        one.change(options);
        EXPECT_EQ(train(knownSystem(400), options).edges(), one.edges);
    }
}

TEST(Training, SeriesThatNoEquationCanHoldAreLeftOutWithAMessage)
{
    struct Case
    {
        const char* message;
        std::function<void(Eigen::MatrixXd&)> change;
        bool isTarget = false;
        bool hasPast = false; ///< an autoregression
    };
    const Case cases[] = {
        {"HVETC0025W tcm:train: the series \"b\" is constant",
         [](auto& values) { values.col(1).setConstant(7); }, false, true},
        {"HVETC0025W tcm:train: the series \"b\" has missing values between others",
         [](auto& values) { values(30, 1) = kMissing; }},
        {"HVETC0025W tcm:train: the series \"b\" has no values",
         [](auto& values) { values.col(1).setConstant(kMissing); }},
        {"HVETC0025W tcm:train: the series \"b\" has an infinite value",
         [](auto& values) { values(3, 1) = std::numeric_limits<double>::infinity(); }},
        {"HVETC0025W tcm:train: the series \"b\" has numbers beyond 1e100",
         [](auto& values) { values.col(1) *= 1e300; }},
        {"HVETC0025W tcm:train: the series \"b\" has only numbers below 1e-100",
         [](auto& values) { values.col(1) *= 1e-300; }},
        {"HVETC0025W tcm:train: the series \"b\" has 5 points, too few for 2 lags",
         [](auto& values) { values.col(1).head(75).setConstant(kMissing); }, false, true},
        {"HVETC0027W tcm:train: lags of the series \"b\" are linear in other terms of the equation "
         "of "
         "\"b\"",
         [](auto& values) { values.col(1).setLinSpaced(0, 79); }, true, true},
        {"HVETC0028W tcm:train: the equation of \"b\" fits without error",
         [](auto& values) { values.col(1).tail(79) = values.col(2).head(79) * 2; }, true, true},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.message);
        Eigen::MatrixXd values = noise(80, 3, 5);
        one.change(values);
        TrainingOptions options = everySeries(3);
        options.lags = 2;
        const Trained trained = train(values, options);
        ASSERT_EQ(trained.error, "");
        EXPECT_THAT(trained.messages, testing::Contains(HasSubstr(one.message)));
        EXPECT_EQ(trained.model.series[1].isTarget, one.isTarget);
        EXPECT_EQ(trained.model.equationOf(1) != nullptr, one.isTarget);
        EXPECT_EQ(trained.model.autoregressionOf(1) != nullptr, one.hasPast);
        EXPECT_NE(trained.model.equationOf(0), nullptr);
        EXPECT_EQ(modelDocument(modelOfDocument(modelDocument(trained.model), {"test"})),
                  modelDocument(trained.model));
    }
}

TEST(Training, ASeriesThatBeginsLateIsModelledOnItsOwnPoints)
{
    const Eigen::MatrixXd whole = knownSystem(400);
    Eigen::MatrixXd values = whole;
    values.col(2).head(150).setConstant(kMissing);
    TrainingOptions options = everySeries(6);
    options.lags = 2;
    const Trained late = train(values, options);
    EXPECT_EQ(late.edges(), "a>b b>c");
    const Trained cut = train(whole.bottomRows(250), options);
    const SeriesEquation& equation = *late.model.equationOf(2);
    ASSERT_EQ(equation.terms.size(), cut.model.equationOf(2)->terms.size());
    for (std::size_t i = 0; i < equation.terms.size(); ++i)
        EXPECT_NEAR(equation.terms[i].coefficient, cut.model.equationOf(2)->terms[i].coefficient,
                    1e-12);
    EXPECT_EQ(equation.residuals.size(), 400U);
    EXPECT_TRUE(std::isnan(equation.residuals[151]));
    EXPECT_FALSE(std::isnan(equation.residuals[152]));
}

TEST(Training, OneOfTwoEqualSeriesIsAPredictor)
{
    Eigen::MatrixXd values = knownSystem(400);
    values.col(5) = values.col(0);
    TrainingOptions options = everySeries(6);
    options.lags = 2;
    const Trained trained = train(values, options);
    EXPECT_EQ(trained.edges(), "a>b b>c");
    EXPECT_THAT(trained.messages,
                testing::Contains(HasSubstr("lags of the series \"f\" are linear in other terms of "
                                            "2 equations, the first that of \"a\"")));
}

TEST(Training, TheNumberOfPointsLimitsLagsAndPredictors)
{
    TrainingOptions options = everySeries(2);
    EXPECT_THAT(
        train(noise(1, 2, 1), options).error,
        HasSubstr("HVETC0023E tcm:train: the points of time that the series have in common are "
                  "1; equations with 1 lag need at least 5"));
    options.lags = 3;
    EXPECT_THAT(train(noise(10, 2, 1), options).error,
                HasSubstr("equations with 3 lags need at least 11"));
    options.lags.reset();
    options.maxLag = 9;
    const Trained few = train(noise(20, 2, 1), options);
    EXPECT_THAT(few.messages, ElementsAre(HasSubstr("HVETC0026W")));
    // More candidates than points: an equation keeps two observations for each parameter.
    options = everySeries(26);
    options.lags = 2;
    options.criterion = SelectionCriterion::Aic;
    for (const SeriesEquation& equation : train(noise(20, 26, 3), options).model.equations)
        EXPECT_LE(2 * equation.fit.parameters, equation.fit.observations);
}

TEST(Training, AutoregressionsHaveTheOrderThatTheirSeriesNeeds)
{
    Eigen::MatrixXd values = noise(400, 2, 8);
    for (Eigen::Index t = 2; t < 400; ++t)
        values(t, 1) += 0.6 * values(t - 2, 1);
    TrainingOptions options = everySeries(2);
    options.lags = 4;
    const TcmModel model = train(values, options).model;
    EXPECT_TRUE(model.autoregressionOf(0)->terms.empty());
    EXPECT_NEAR(model.autoregressionOf(0)->intercept, values.col(0).mean(), 1e-12);
    EXPECT_EQ(model.autoregressionOf(1)->terms.size(), 2U);
    const Exact exact(values, *model.autoregressionOf(1), 2);
    expectNear(model.autoregressionOf(1)->terms[1].coefficient, exact.coefficients(2), "lag 2");
    EXPECT_EQ(model.lastValues, values.bottomRows(4));
}

TEST(Training, OutliersAreResidualsThatChanceDoesNotExplain)
{
    Eigen::MatrixXd values = noise(200, 2, 9);
    values(120, 1) += 9;
    TrainingOptions options = everySeries(2);
    options.lags = 1;
    options.outlierLevel = 0.9999;
    const TcmModel model = train(values, options).model;
    ASSERT_EQ(model.outliers.size(), 1U);
    EXPECT_EQ(model.outliers[0].timeIndex, 120);
    EXPECT_EQ(model.outliers[0].actual, values(120, 1));
    EXPECT_NEAR(model.outliers[0].actual - model.outliers[0].predicted,
                model.equations[1].residuals[120], 1e-12);
}

TEST(Training, EndsWhereverItIsStopped)
{
    const TrainingOptions options = everySeries(6);
    SeriesTable table;
    table.values = knownSystem(100);
    const std::vector<ModelSeries> series(6, ModelSeries{"a", {"a"}, false, false});
    int calls = 0;
    const auto stopAt = [&](int last) {
        calls = 0;
        trainModel(table, series, options,
                   {[](const std::string&, const datafile::FaultParts&) {},
                    [&, last] {
                        if (++calls == last)
                            throw std::runtime_error("stopped");
                    }},
                   "tcm:train");
    };
    stopAt(0);
    const int all = calls;
    EXPECT_GT(all, 50);
    for (const int last : {1, 2, all / 2, all}) {
        EXPECT_THROW(stopAt(last), std::runtime_error);
        EXPECT_EQ(calls, last);
    }
}

TEST(Training, FitStatisticsAreThoseWorkedOutByHand)
{
    Eigen::VectorXd actual(10);
    actual << 2, 4, 2, 4, 2, 4, 2, 4, 2, 4;
    Eigen::VectorXd residuals(10);
    residuals << 1, -1, 1, -1, 1, -1, 1, -1, 1, -1;
    const FitStatistics fit = fitStatistics(actual, residuals, 2, 1, false);
    EXPECT_DOUBLE_EQ(*fit.rSquared, 0);
    EXPECT_DOUBLE_EQ(*fit.adjustedRSquared, 1 - 9.0 / 8);
    EXPECT_DOUBLE_EQ(*fit.rmse, 1);
    EXPECT_DOUBLE_EQ(*fit.mae, 1);
    EXPECT_DOUBLE_EQ(*fit.rmspe, std::sqrt((0.25 + 0.0625) / 2));
    EXPECT_DOUBLE_EQ(*fit.durbinWatson, 3.6);
    // Two lags, r = -0.9 and 0.8, one of them the equation's own.
    EXPECT_DOUBLE_EQ(*fit.ljungBox, 120 * (0.81 / 9 + 0.64 / 8));
    EXPECT_NEAR(*fit.ljungBoxPValue, std::erfc(std::sqrt(120 * (0.81 / 9 + 0.64 / 8) / 2)), 1e-12);
    EXPECT_NEAR(*fit.bic - *fit.aic, 2 * (std::log(10) - 2), 1e-12);
    EXPECT_NEAR(*fit.aic, 10 * (std::log(2 * M_PI) + 1) + 4, 1e-12);
    EXPECT_NEAR(twoSidedT(-2.228138852, 10), 0.05, 1e-9);
    EXPECT_NEAR(upperF(4.102821, 2, 10), 0.05, 1e-7);
}

} // namespace
