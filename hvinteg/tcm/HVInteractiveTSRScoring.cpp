#include <algorithm>
#include <limits>

#include "dialog/OutputRows.h"
#include "dialog/RequestScope.h"
#include "hvl/TextJob.h"
#include "runner/ExecutionScope.h"
#include "runner/HVRunner.h"
#include "support/Conversions.h"
#include "support/Tracing.h"
#include "tcm/ForecastRows.h"
#include "tcm/HVInteractiveTSR.h"
#include "tcm/PreparationReplay.h"
#include "tcm/ScoredRows.h"
#include "tcm/ScoringJob.h"
#include "tcm/SeriesNames.h"

// The predictions of a model for one series.

namespace {

constexpr ScoringStep kByCausalModel = {"tcm:score(scoreConf, scoreInConf,_)", "TCM_SCORE", true};
constexpr ScoringStep kByItself = {"tcm:ar(scoreConf, scoreInConf,_)", "AR_SCORE", false};

/// The number of a record by its offset from the last one that the model was trained on.
int recordAt(long long offset, int timePointCount)
{
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(
        std::clamp<long long>(offset + timePointCount, Limits::min(), Limits::max()));
}

/// The name of a job's file for getOutputIterator.
std::string fileNameOf(const HVSimpleContainer& container)
{
    const std::string uri = removeBackslash(TransformPath(container.getAbsolutePath()));
    return uri.substr(uri.rfind('/') + 1);
}

/// A causal model needs the field of predictions only for rows after the data.
bool readScores(HVRunner& runner, const SeriesScoring& scoring, const ScoringStep& step,
                const std::string& fileName)
{
    OutputRows output(runner, fileName);
    if (output.get() == nullptr)
        return false;
    ScoredRows rows(*output.get(), scoring.metricName);
    const bool isRead = rows.hasActual() && (step.isCausal || rows.hasPredicted()) &&
                        rows.read(scoring.firstRecord, scoring.endRecord, scoring.actualValues,
                                  scoring.predictedValues);
    output.dispose();
    return isRead;
}

} // namespace

bool HVInteractiveTSR::GetScenarioInfo(
    LocallyUniqueID dataset, const std::string& modelPath, const std::string& timeField,
    const std::string& rangeStart, const std::string& rangeEnd,
    const std::vector<std::string>& /*reservedNames*/,
    const std::vector<long long>& /*reservedFirst*/,
    const std::vector<long long>& /*reservedSecond*/, const std::string& metricName,
    const std::vector<std::string>& dimFields, const std::vector<std::string>& dimValues,
    std::vector<double>& actualValues, std::vector<double>& predictedValues)
{
    beginRequest();
    if (metricName.empty())
        return false;
    PreparationReplay data{dataset, modelPath, dimFields};
    RequestScope request(*this);
    int timePointCount = 0;
    bool isTarget = false;
    if (!fitSettings(data) || !data.settings.countTimePoints(timePointCount) ||
        !prepareData(data, timeField) ||
        !IsTargetSeries(modelPath, metricName, dimFields, dimValues, isTarget))
        return false;
    const int end = String2Integer(rangeEnd);
    const int first = recordAt(String2Integer(rangeStart), timePointCount);
    const bool isScored =
        scoreSeries({modelPath, metricName, dimValues, data, std::max(end, 0), first,
                     recordAt(end + 1LL, timePointCount), actualValues, predictedValues},
                    isTarget ? kByCausalModel : kByItself);
    request.end();
    return isScored;
}

bool HVInteractiveTSR::scoreSeries(const SeriesScoring& scoring, const ScoringStep& step)
{
    const RecordFile output("outputData", "outputDataModel");
    const ExecutionScope execution(runner());
    const std::string job = scoringJob(scoring, step, output);
    bool isScored = runner().prepareHVLJob(job) && tryRunHV(runner());
    traceHVLFile(job, "SCENARIO_INFO", step.traceName);
    if (isScored)
        isScored = readScores(runner(), scoring, step, fileNameOf(output.records));
    runner().displayAllMessages(true, true);
    runner().cleanJRef();
    runner().cleanExecution();
    return isScored;
}

bool HVInteractiveTSR::getForecast(LocallyUniqueID dataset, const std::string& modelPath,
                                   const std::string& metricName,
                                   const std::vector<std::string>& dimFields,
                                   const std::vector<std::string>& dimValues,
                                   const HVForecastRequest& request, HVSeriesForecast& forecast)
{
    beginRequest();
    PreparationReplay data{dataset, modelPath, dimFields};
    RequestScope scope(*this);
    bool isTarget = false;
    if (!fitSettings(data) || !prepareData(data, data.settings.dateTimeField()))
        return false;
    // The next job clears them.
    UpdateMessageList();
    if (!IsTargetSeries(modelPath, metricName, dimFields, dimValues, isTarget))
        return false;
    std::vector<std::string> series = dimValues;
    series.push_back(metricName);
    const bool isScored = forecastSeries({modelPath, series, data, request},
                                         isTarget ? kByCausalModel : kByItself, forecast);
    UpdateMessageList();
    scope.end();
    return isScored;
}

bool HVInteractiveTSR::forecastSeries(const SeriesForecast& forecast, const ScoringStep& step,
                                      HVSeriesForecast& result)
{
    const RecordFile output("outputData", "outputDataModel");
    const ExecutionScope execution(runner());
    const std::string job = forecastJob(forecast, step, output);
    traceHVLFile(job, "FORECAST", step.traceName);
    bool isScored = runner().prepareHVLJob(job) && tryRunHV(runner());
    if (isScored) {
        OutputRows rows(runner(), fileNameOf(output.records));
        isScored =
            rows.get() != nullptr && readForecast(*rows.get(), forecast.series.back(), result);
        rows.dispose();
    }
    runner().displayAllMessages(true, true);
    runner().cleanJRef();
    runner().cleanExecution();
    return isScored;
}
