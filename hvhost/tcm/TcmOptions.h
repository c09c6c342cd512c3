#pragma once

#include <optional>
#include <string>
#include <vector>

#include "hvhost/base/CommonOptions.h"

/// The commands of "hvhost tcm". Each throws CommandFault, and returns when it is done.

/// How a result is shown and where it goes.
struct TcmShownOptions
{
    std::string format;  ///< text, csv, json or html; empty: by the name of the output, else text
    std::string output;  ///< empty for standard output
    long long width = 0; ///< of text; 0: that of the terminal
    bool force = false;
};

/// A series is written as its dimension values and its metric, separated by commas. A value with a
/// comma is enclosed in double quotes.
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
/// Trains a model.
void tcmTrain(const TcmTrainOptions& options, const CommonOptions& common);

struct TcmInfoOptions
{
    std::string model;
    TcmShownOptions shown;
};
/// The series of a model, its equations and how well they fit.
void tcmInfo(const TcmInfoOptions& options, const CommonOptions& common);

struct TcmForecastOptions
{
    std::string model;
    InputOptions input;
    std::string series;
    int horizon = 0;
    double confidence = 95;            ///< percent
    std::vector<std::string> scenario; ///< SERIES[TIME]=VALUE, or =+N%
    TcmShownOptions shown;
};
/// The predictions of a model for a series.
void tcmForecast(const TcmForecastOptions& options, const CommonOptions& common);

/// The data are optional.
struct TcmImpactOptions
{
    std::string model;
    InputOptions input; ///< an empty path for none
    std::string series;
    int level = 1;
    TcmShownOptions shown;
};
/// What a series influences, and what influences it.
void tcmImpact(const TcmImpactOptions& options, const CommonOptions& common);

struct TcmOutliersOptions
{
    std::string model;
    InputOptions input;
    std::string series; ///< empty for all
    TcmShownOptions shown;
};
/// The outliers in the data.
void tcmOutliers(const TcmOutliersOptions& options, const CommonOptions& common);
