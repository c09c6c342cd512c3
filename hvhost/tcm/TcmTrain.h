#pragma once

#include <optional>
#include <string>
#include <vector>

#include "hvhost/base/CommonOptions.h"

namespace CLI {
class App;
}

/// The options of tcm train. A series is written as its dimension values and its metric, separated
/// by commas. A value with a comma is enclosed in double quotes.
struct TcmTrainOptions
{
    InputOptions input;
    std::string output;
    bool force = false;
    bool printJob = false;

    std::string timeField;
    std::vector<std::string> cyclicFields;
    bool caseCount = false;
    std::string interval; ///< [N] UNIT, as in "15 minutes"; empty: found in the data
    std::string workingDays;
    std::string workingHours;
    std::vector<std::string> dimensions;
    std::vector<std::string> metrics;
    std::vector<std::string> aggregations; ///< FUNCTION, or METRIC=FUNCTION
    std::string missing;
    std::optional<double> maxMissing; ///< a share; alone, it implies linear interpolation

    std::vector<std::string> targets;
    std::vector<std::string> predictors;
    std::vector<std::string> both;
    std::vector<std::string> forced; ///< TARGET:PREDICTOR
    std::vector<std::string> forbidden;
    std::optional<int> lags;
    std::optional<int> maxLag;
    std::string criterion;
    std::optional<int> maxPredictors;
    std::optional<double> outlierLevel;
};
/// Trains a model. Throws CommandFault.
void tcmTrain(const TcmTrainOptions& options, const CommonOptions& common);

/// Adds the command to the commands of "hvhost tcm". `common` must outlive them.
void addTcmTrainCommand(CLI::App& tcm, CommonOptions& common);
