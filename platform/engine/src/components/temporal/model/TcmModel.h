#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <Eigen/Core>

namespace EmbeddedHV {

/// One lagged value in an equation: `coefficient` times the value that the series had `lag` points
/// of time before.
struct LaggedTerm
{
    std::size_t series = 0; ///< a place in TcmModel::series
    int lag = 1;            ///< from 1
    double coefficient = 0;
    double standardError = 0;
    double tStatistic = 0;
    double pValue = 1; ///< two-sided
};

/// All lagged values of one predictor together.
struct PredictorGroup
{
    std::size_t series = 0;
    double fStatistic = 0; ///< that all its coefficients are 0
    double pValue = 1;
    bool isForced = false;
};

/// How well an equation describes its target in the training data. What the data do not determine
/// is absent.
struct FitStatistics
{
    std::int64_t observations = 0;
    int parameters = 0; ///< coefficients with the intercept
    double residualSumOfSquares = 0;
    std::optional<double> rSquared;
    std::optional<double> adjustedRSquared;
    std::optional<double> rmse;  ///< root mean square error
    std::optional<double> rmspe; ///< root mean square percentage error
    std::optional<double> mae;   ///< mean absolute error
    std::optional<double> aic;
    std::optional<double> bic;
    std::optional<double> durbinWatson;
    std::optional<double> ljungBox; ///< Q statistic of the residuals
    std::optional<double> ljungBoxPValue;
};

/// The equation of a series: of a target by its own past and that of its predictors, of any series
/// by its own past alone.
struct SeriesEquation
{
    std::size_t series = 0; ///< whose values it gives
    double intercept = 0;
    double interceptStandardError = 0;
    std::vector<LaggedTerm> terms;      ///< by predictor, then by lag
    std::vector<PredictorGroup> groups; ///< the series itself first, then in order of selection
    double residualVariance = 0;        ///< over observations less parameters
    FitStatistics fit;
    /// Of the points of time of the training from the first on; not-a-number where the equation has
    /// no value.
    std::vector<double> residuals;
};

/// A series of the model.
struct ModelSeries
{
    std::string id;                ///< codes joined by hyphens, as in "4-1"
    std::vector<std::string> name; ///< the values of the dimension fields, then the metric
    bool isTarget = false;
    bool isCandidate = false; ///< for a predictor
};

/// The name of a series for messages: its values and its metric.
std::string shownName(const ModelSeries& series);

/// A residual that is larger than chance lets expect.
struct SeriesOutlier
{
    std::size_t series = 0;
    std::int64_t timeIndex = 0;
    double actual = 0;
    double predicted = 0;
    double pValue = 0;
};

/// A trained model: y[j,t] = c[j] + the sum of b[j,i,l] y[i,t-l] over the terms + e[j,t].
struct TcmModel
{
    int lags = 1;                    ///< the largest lag of the equations
    std::int64_t trainingPoints = 0; ///< points of time, numbered from 0
    double outlierLevel = 0.99;
    std::vector<ModelSeries> series;
    std::vector<SeriesEquation> equations;       ///< of the targets, in the order of `series`
    std::vector<SeriesEquation> autoregressions; ///< of series that have one, likewise
    std::vector<SeriesOutlier> outliers;         ///< by series, then by time
    /// The last values of each series in the training data, a column a series: as many rows as the
    /// equations need, the last row for the last point of time.
    Eigen::MatrixXd lastValues;

    /// The place of the series with the id in `series`; nothing if the model has no series of that
    /// id.
    std::optional<std::size_t> placeOf(const std::string& id) const;
    /// The equation of a target; null for any other series.
    const SeriesEquation* equationOf(std::size_t series) const;
    /// The autoregression of a series; null if the series has no autoregression.
    const SeriesEquation* autoregressionOf(std::size_t series) const;
};

} // namespace EmbeddedHV
