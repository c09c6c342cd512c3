#pragma once

#include <string>
#include <vector>

struct HVForecastRequest;
struct PreparationReplay;
struct RecordFile;

/// One series to be scored, on data that are prepared, and where its values go. Records are counted
/// from 1; the last one is that before `endRecord`.
struct SeriesScoring
{
    const std::string& modelPath;
    const std::string& metricName;
    const std::vector<std::string>& dimValues;
    const PreparationReplay& data;
    int forecastSpan;
    int firstRecord;
    int endRecord;
    std::vector<double>& actualValues;
    std::vector<double>& predictedValues;
};

/// The two ways of scoring: by the causal model, for its targets, and by the model that a series
/// has of itself alone.
struct ScoringStep
{
    const char* call;
    const char* traceName;
    bool isCausal;
};

/// The job that scores a series and leaves its rows in a file.
std::string scoringJob(const SeriesScoring& scoring, const ScoringStep& step,
                       const RecordFile& output);

/// The same for all points of time, with bounds, and with values that are given.
struct SeriesForecast
{
    const std::string& modelPath;
    const std::vector<std::string>& series;
    const PreparationReplay& data;
    const HVForecastRequest& request;
};
std::string forecastJob(const SeriesForecast& forecast, const ScoringStep& step,
                        const RecordFile& output);
