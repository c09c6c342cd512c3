#include "tcm/TrainingSettings.h"

#include "bridge/JNIJSONArray.h"
#include "bridge/JNIJSONObject.h"

namespace {

JNIJSONArray listOf(const std::vector<std::string>& texts)
{
    JNIJSONArray list;
    for (const std::string& text : texts)
        list.add(text.c_str());
    return list;
}

void putList(JNIJSONObject& json, const char* key, const std::vector<std::string>& texts)
{
    JNIJSONArray list = listOf(texts);
    json.put(key, &list);
}

void putText(JNIJSONObject& json, const char* key, const std::string& text)
{
    if (!text.empty())
        json.put(key, text.c_str());
}

template <class Number>
void putNumber(JNIJSONObject& json, const char* key, const std::optional<Number>& number)
{
    if (number)
        json.put(key, *number);
}

void putInterval(JNIJSONObject& json, const TrainingSettings& settings)
{
    const bool isSet = !settings.intervalUnit.empty() || !settings.workingDays.empty() ||
                       settings.workingHours.has_value();
    if (!isSet)
        return;
    JNIJSONObject interval;
    if (!settings.intervalUnit.empty()) {
        interval.put("unit", settings.intervalUnit.c_str());
        interval.put("increment", settings.intervalIncrement);
    }
    if (!settings.workingDays.empty()) {
        JNIJSONArray days;
        for (const int day : settings.workingDays)
            days.add(day);
        interval.put("workingDays", &days);
    }
    if (settings.workingHours) {
        JNIJSONObject hours;
        hours.put("from", settings.workingHours->first);
        hours.put("to", settings.workingHours->second);
        interval.put("workingHours", &hours);
    }
    json.put("timeInterval", &interval);
}

void putAggregation(JNIJSONObject& json, const TrainingSettings& settings)
{
    if (settings.aggregationOfMetrics.empty()) {
        putText(json, "aggregation", settings.aggregation);
        return;
    }
    JNIJSONObject fields;
    for (const auto& [metric, function] : settings.aggregationOfMetrics)
        fields.put(metric, function.c_str());
    JNIJSONObject aggregation;
    putText(aggregation, "default", settings.aggregation);
    aggregation.put("fields", &fields);
    json.put("aggregation", &aggregation);
}

void putMissingValues(JNIJSONObject& json, const TrainingSettings& settings)
{
    if (settings.missingMethod.empty())
        return;
    JNIJSONObject missing;
    missing.put("method", settings.missingMethod.c_str());
    missing.put("maxShare", settings.maxMissingShare);
    json.put("missingValues", &missing);
}

/// A metric alone means all its series.
void addSeries(JNIJSONArray& list, const TrainingSettings::Series& series)
{
    if (series.size() == 1) {
        list.add(series.front().c_str());
        return;
    }
    JNIJSONArray names = listOf(series);
    list.add(&names);
}

void putSeries(JNIJSONObject& json, const char* key, const TrainingSettings::Series& series)
{
    if (series.size() == 1)
        json.put(key, series.front().c_str());
    else if (!series.empty())
        putList(json, key, series);
}

void putSeriesList(JNIJSONObject& json, const char* key,
                   const std::vector<TrainingSettings::Series>& series)
{
    if (series.empty())
        return;
    JNIJSONArray list;
    for (const TrainingSettings::Series& name : series)
        addSeries(list, name);
    json.put(key, &list);
}

void putPairs(JNIJSONObject& json, const char* key,
              const std::vector<TrainingSettings::SeriesPair>& pairs)
{
    if (pairs.empty())
        return;
    JNIJSONArray list;
    for (const auto& [target, predictor] : pairs) {
        JNIJSONObject pair;
        putSeries(pair, "target", target);
        putSeries(pair, "predictor", predictor);
        list.add(&pair);
    }
    json.put(key, &list);
}

} // namespace

std::string preparationJson(const TrainingSettings& settings)
{
    JNIJSONObject json;
    putList(json, "dimFieldList", settings.dimensions);
    putList(json, "metricFieldList", settings.metrics);
    json.put("dateTimeField", settings.timeField.c_str());
    if (!settings.cyclicFields.empty())
        putList(json, "cyclicFieldList", settings.cyclicFields);
    putInterval(json, settings);
    putAggregation(json, settings);
    putMissingValues(json, settings);
    return json.toString();
}

std::string trainingJson(const TrainingSettings& settings)
{
    JNIJSONObject json;
    putSeriesList(json, "targets", settings.targets);
    putSeriesList(json, "candidates", settings.predictors);
    putSeriesList(json, "both", settings.both);
    putPairs(json, "forced", settings.forced);
    putPairs(json, "forbidden", settings.forbidden);
    putNumber(json, "lags", settings.lags);
    putNumber(json, "maxLag", settings.maxLag);
    putText(json, "criterion", settings.criterion);
    putNumber(json, "maxPredictors", settings.maxPredictors);
    putNumber(json, "outlierLevel", settings.outlierLevel);
    return json.toString();
}
