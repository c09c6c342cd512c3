#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// The settings of a training. The engine's defaults apply to unset ones. Plain data, because Java
/// objects live only as long as a job.
struct TrainingSettings
{
    using Series = std::vector<std::string>;
    using SeriesPair = std::pair<Series, Series>; ///< a target and a predictor

    std::vector<std::string> dimensions;
    std::vector<std::string> metrics;
    std::string timeField;
    std::vector<std::string> cyclicFields; ///< without a time field
    bool isTimeText = false;

    std::string intervalUnit; ///< empty: found in the data
    int intervalIncrement = 1;
    std::vector<int> workingDays;
    std::optional<std::pair<int, int>> workingHours;

    std::string aggregation;
    std::map<std::string, std::string> aggregationOfMetrics;
    std::string missingMethod;
    double maxMissingShare = 0;

    std::vector<Series> targets;
    std::vector<Series> predictors;
    std::vector<Series> both;
    std::vector<SeriesPair> forced;
    std::vector<SeriesPair> forbidden;
    std::optional<int> lags;
    std::optional<int> maxLag;
    std::string criterion;
    std::optional<int> maxPredictors;
    std::optional<double> outlierLevel;
};

/// The configurations of the two steps, JSON. They are made in Java, on the thread of the
/// JNIObjectManager. Throws JNIException.
std::string preparationJson(const TrainingSettings& settings);
std::string trainingJson(const TrainingSettings& settings);
