#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <Eigen/Core>

#include "components/temporal/base/ProgressSink.h"
#include "components/temporal/base/SeriesTable.h"
#include "components/temporal/base/StopCheck.h"
#include "components/temporal/model/TcmModel.h"
#include "components/temporal/scoring/ModelAncestors.h"

namespace EmbeddedHV {

/// The longest forecast, in points of time.
inline constexpr std::int64_t kLongestForecast = 100000;

/// A value that a scenario sets for a series beyond the data: at one point of time, or at all
/// points if it names no point.
struct ScenarioValue
{
    std::size_t series = 0;                ///< a place in TcmModel::series
    std::optional<std::int64_t> ahead;     ///< 1 is the first point beyond the data
    std::optional<std::int64_t> timeIndex; ///< the same by the number of the point of time
    std::optional<double> value;
    double change = 0; ///< without a value: 0.1 is 10 % above the forecast without a scenario
};

/// What is to be computed.
struct ScoringRequest
{
    std::vector<std::size_t> series; ///< places in TcmModel::series, each once
    PredictedBy by = PredictedBy::Causes;
    bool fits = true;              ///< one-step-ahead values in the data
    std::int64_t span = 0;         ///< points of time beyond the data, up to kLongestForecast
    double confidenceLevel = 0.95; ///< of the bounds, between 0 and 1
    bool refits = false;           ///< coefficients by least squares on the table
    std::vector<ScenarioValue> scenario;
};

/// Actual and predicted values of one series, one a point of time. Not-a-number where a
/// value is unknown.
struct SeriesScores
{
    std::size_t series = 0; ///< a place in TcmModel::series
    Eigen::VectorXd actual;
    Eigen::VectorXd predicted;
    Eigen::VectorXd lower;
    Eigen::VectorXd upper;
};

struct Scores
{
    std::int64_t firstIndex = 0;      ///< of the first record
    Eigen::Index records = 0;         ///< points of time in the data; those beyond follow
    std::vector<SeriesScores> series; ///< in the order of the request
    std::vector<FaultParts> remarks;  ///< for messages
};

/// Scores series on prepared data: one-step-ahead values in the data and recursive forecasts beyond
/// them, with bounds from the errors of the whole system of equations. Only the series asked for
/// and those that they are predicted from are read and computed. `component` begins every message.
/// Throws JobError if the model or the data lack a series or a scenario does not fit, and what
/// `check` throws. Any thread.
Scores score(
    const TcmModel& model, const SeriesTable& table, const ScoringRequest& request,
    const std::string& component, const StopCheck& check,
    const ProgressSink& progress = [](double) {});

} // namespace EmbeddedHV
