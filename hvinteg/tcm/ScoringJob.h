#pragma once

#include <string>
#include <vector>

struct HVForecastRequest;
struct PreparationReplay;
struct RecordFile;

/// A series to score on prepared data, and the lists for its values. Records are counted from 1;
/// `endRecord` is not included.
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

/// One of the two steps that score: by the causal model, for its targets, or by the autoregression
/// of a series.
struct ScoringStep
{
    const char* call;
    const char* traceName;
    bool isCausal;
};

/// The job that scores a series and writes its rows to a file.
std::string scoringJob(const SeriesScoring& scoring, const ScoringStep& step,
                       const RecordFile& output);

/// A series to score at all points of time, with bounds and with values that the caller gives.
struct SeriesForecast
{
    const std::string& modelPath;
    const std::vector<std::string>& series;
    const PreparationReplay& data;
    const HVForecastRequest& request;
};
std::string forecastJob(const SeriesForecast& forecast, const ScoringStep& step,
                        const RecordFile& output);
