#include "tcm/ScoringJob.h"

#include "bridge/JNIJSONArray.h"
#include "bridge/JNIJSONObject.h"
#include "hvl/TextJob.h"
#include "tcm/HVForecast.h"
#include "tcm/PreparationReplay.h"
#include "tcm/TemporalJobText.h"

namespace {

JNIJSONObject fieldSetting(const std::vector<std::string>& series, bool isTarget)
{
    JNIJSONArray names;
    for (const std::string& name : series)
        names.add(name.c_str());
    JNIJSONArray list;
    list.add(&names);
    JNIJSONObject fields;
    fields.put("seriesIDList", &list);
    JNIJSONObject setting;
    if (isTarget)
        setting.put("fieldType", "INCLUDED_TARGET_LIST");
    setting.put("fieldNameList", &fields);
    return setting;
}

JNIJSONObject forecastSetting(int forecastSpan, bool isTarget)
{
    JNIJSONObject setting;
    if (isTarget)
        setting.put("doForecast", true);
    setting.put("forecastSpan", forecastSpan);
    return setting;
}

void GenerateScoreSettings(JNIJSONObject& settings, const std::vector<std::string>& series,
                           int forecastSpan, bool isTarget)
{
    JNIJSONObject fields = fieldSetting(series, isTarget);
    settings.put("fieldSetting", &fields);
    if (forecastSpan > 0) {
        JNIJSONObject forecast = forecastSetting(forecastSpan, isTarget);
        settings.put("forecast", &forecast);
    }
    if (isTarget) {
        JNIJSONObject fit;
        fit.put("doFit", true);
        settings.put("fit", &fit);
    }
}

JNIJSONObject scenarioValue(const HVScenarioValue& given)
{
    JNIJSONArray series;
    for (const std::string& name : given.series)
        series.add(name.c_str());
    JNIJSONObject json;
    json.put("series", &series);
    if (given.ahead > 0)
        json.put("ahead", given.ahead);
    json.put(given.isRelative ? "change" : "value", given.value);
    return json;
}

/// Asks for one-step predictions in the data, and for bounds.
JNIJSONObject forecastSettings(const SeriesForecast& forecast, bool isTarget)
{
    JNIJSONObject settings;
    GenerateScoreSettings(settings, forecast.series, forecast.request.horizon, isTarget);
    settings.put("outputOriginalValue", true);
    settings.put("confidenceLevel", forecast.request.confidenceLevel);
    if (forecast.request.scenario.empty())
        return settings;
    JNIJSONArray scenario;
    for (const HVScenarioValue& given : forecast.request.scenario) {
        JNIJSONObject value = scenarioValue(given);
        scenario.add(&value);
    }
    settings.put("scenario", &scenario);
    return settings;
}

/// Scores the prepared records and writes a file with the names and times of the series.
std::string jobText(const JNIJSONObject& settings, const std::string& modelPath,
                    const PreparationReplay& data, const ScoringStep& step,
                    const RecordFile& output)
{
    JNIJSONObject json = settings;
    return readerLine(data.prepared) + definition("scoreConf", json.toString()) +
           modelLine("scoreInConf", "InputTCMXML", modelPath) +
           GenerateRtsdpConf(data.output.getAbsolutePath()) + writerLine(output) +
           "read(readerConf)->" + step.call +
           "->rtsdp:rtsdp(rtsdpConf, rtsdpInConf, _)->write(writerConf)";
}

} // namespace

std::string scoringJob(const SeriesScoring& scoring, const ScoringStep& step,
                       const RecordFile& output)
{
    std::vector<std::string> series = scoring.dimValues;
    series.push_back(scoring.metricName);
    JNIJSONObject settings;
    GenerateScoreSettings(settings, series, scoring.forecastSpan, step.isCausal);
    settings.put("outputOriginalValue", true);
    return jobText(settings, scoring.modelPath, scoring.data, step, output);
}

std::string forecastJob(const SeriesForecast& forecast, const ScoringStep& step,
                        const RecordFile& output)
{
    return jobText(forecastSettings(forecast, step.isCausal), forecast.modelPath, forecast.data,
                   step, output);
}
