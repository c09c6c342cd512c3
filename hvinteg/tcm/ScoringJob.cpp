#include "tcm/ScoringJob.h"

#include "bridge/JNIJSONArray.h"
#include "bridge/JNIJSONObject.h"
#include "hvl/TextJob.h"
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

} // namespace

std::string scoringJob(const SeriesScoring& scoring, const ScoringStep& step,
                       const RecordFile& output)
{
    std::vector<std::string> series = scoring.dimValues;
    series.push_back(scoring.metricName);
    JNIJSONObject settings;
    GenerateScoreSettings(settings, series, scoring.forecastSpan, step.isCausal);
    settings.put("outputOriginalValue", true);
    return readerLine(scoring.data.prepared) + definition("scoreConf", settings.toString()) +
           modelLine("scoreInConf", "InputTCMXML", scoring.modelPath) +
           GenerateRtsdpConf(scoring.data.output.getAbsolutePath()) + writerLine(output) +
           "read(readerConf)->" + step.call +
           "->rtsdp:rtsdp(rtsdpConf, rtsdpInConf, _)->write(writerConf)";
}
