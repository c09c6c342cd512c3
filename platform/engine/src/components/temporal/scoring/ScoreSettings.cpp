#include "components/temporal/scoring/ScoreSettings.h"

#include <algorithm>
#include <cmath>

#include "ErrorIds.h"
#include "JobError.h"
#include "base/NearestName.h"
#include "components/temporal/model/SeriesLookup.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kListedSeries = "INCLUDED_TARGET_LIST";
constexpr const char* kAllTargets = "ALL_TARGETS";
constexpr const char* kAllSeries = "ALL_SERIES";

/// A number, or nothing if the setting is absent.
std::optional<double> realSetting(const Settings& settings, const std::string& key)
{
    const auto number = settings.number(key);
    if (!number)
        return std::nullopt;
    const double value =
        number->IsInteger() ? static_cast<double>(number->GetInteger()) : number->GetReal();
    if (!std::isfinite(value))
        settings.refuse(key, "is not a finite number");
    return value;
}

/// Reads the settings of one call.
class ScoreSettingsReader
{
public:
    ScoreSettingsReader(const StepCall& call, const TcmModel& model, const SeriesLookup& lookup,
                        PredictedBy by)
        : _call(call), _settings(call.settings()), _model(model), _lookup(lookup)
    {
        _result.request.by = by;
    }

    ScoreSettings read();

private:
    void readFields();
    void readSeriesList(const Settings& fields);
    void addAll(bool targetsOnly);
    void readForecast();
    void readFit();
    void readLevel();
    void readScenario();
    ScenarioValue scenarioValue(const Settings& item) const;
    void reportOthers(const Settings& settings) const
    {
        settings.reportOthers(_call.context.message);
    }

    const StepCall& _call;
    Settings _settings;
    const TcmModel& _model;
    const SeriesLookup& _lookup;
    ScoreSettings _result;
};

void ScoreSettingsReader::readFields()
{
    const Settings fields = _settings.neededObject("fieldSetting");
    const std::string type = fields.text("fieldType").value_or(kListedSeries);
    if (type == kListedSeries)
        readSeriesList(fields);
    else if (type == kAllTargets || type == kAllSeries)
        addAll(type == kAllTargets);
    else
        fields.refuse("fieldType",
                      "is \"" + type + "\", not one of " + kListedSeries + ", " + kAllTargets +
                          ", " + kAllSeries +
                          base::suggestion(type, {kListedSeries, kAllTargets, kAllSeries}));
    reportOthers(fields);
}

void ScoreSettingsReader::readSeriesList(const Settings& fields)
{
    const Settings names = fields.neededObject("fieldNameList");
    const std::string key = "seriesIDList";
    const Json& list = names.neededList(key);
    if (list.empty())
        names.refuse(key, "is empty");
    std::vector<std::size_t>& series = _result.request.series;
    std::vector<bool> isListed(_model.series.size(), false);
    for (std::size_t i = 0; i < list.size(); ++i) {
        const std::size_t place = _lookup.placeAt(names, list, key, i);
        const std::string element = key + "[" + std::to_string(i) + "]";
        if (isListed[place])
            names.refuse(element,
                         "names the series " + shownName(_model.series[place]) + " a second time");
        isListed[place] = true;
        if (_result.request.by == PredictedBy::Causes && !_model.series[place].isTarget)
            names.refuse(element,
                         "names the series " + shownName(_model.series[place]) +
                             ", which is not a target of the model; tcm:ar predicts it from "
                             "its own past");
        series.push_back(place);
    }
    reportOthers(names);
}

/// Adds the series that have an equation.
void ScoreSettingsReader::addAll(bool targetsOnly)
{
    const bool byCauses = _result.request.by == PredictedBy::Causes;
    for (std::size_t place = 0; place < _model.series.size(); ++place) {
        const bool hasEquation = (byCauses && _model.equationOf(place)) ||
                                 (_model.autoregressionOf(place) && !(byCauses && targetsOnly));
        if (hasEquation && (_model.series[place].isTarget || !targetsOnly))
            _result.request.series.push_back(place);
    }
    if (_result.request.series.empty())
        throw JobError(errors::kNoEquation,
                       {.step = _call.name, .what = "the model has no equation to score"});
}

void ScoreSettingsReader::readForecast()
{
    if (!_settings.has("forecast"))
        return;
    const Settings forecast = _settings.neededObject("forecast");
    const bool isWanted = forecast.flag("doForecast").value_or(true);
    const auto span = forecast.integer("forecastSpan");
    if (span && (*span < 0 || *span > kLongestForecast))
        forecast.refuse("forecastSpan", "is " + std::to_string(*span) + ", not from 0 to " +
                                            std::to_string(kLongestForecast));
    if (isWanted && !span)
        forecast.refuse("forecastSpan", "is missing: give the number of points to forecast");
    if (isWanted)
        _result.request.span = *span;
    reportOthers(forecast);
}

void ScoreSettingsReader::readFit()
{
    if (!_settings.has("fit"))
        return;
    const Settings fit = _settings.neededObject("fit");
    _result.request.fits = fit.flag("doFit").value_or(true);
    _result.request.refits = fit.flag("refit").value_or(false);
    reportOthers(fit);
}

void ScoreSettingsReader::readLevel()
{
    const auto level = realSetting(_settings, "confidenceLevel");
    if (!level)
        return;
    // Of a level next to 1, half of what is left is nothing.
    if (*level <= 0 || (1 + *level) / 2 >= 1)
        _settings.refuse("confidenceLevel", "is not between 0 and 1");
    _result.request.confidenceLevel = *level;
}

ScenarioValue ScoreSettingsReader::scenarioValue(const Settings& item) const
{
    ScenarioValue value;
    value.series = _lookup.placeOf(item, "series");
    value.ahead = item.integer("ahead");
    value.timeIndex = item.integer("timeIndex");
    if (value.ahead && value.timeIndex)
        item.refuse("timeIndex", "names a point of time as \"ahead\" does; give one of them");
    value.value = realSetting(item, "value");
    const auto change = realSetting(item, "change");
    if (value.value.has_value() == change.has_value())
        item.refuse("value", change ? "is given with \"change\"; give one of them"
                                    : "is missing, as is \"change\"; give one of them");
    value.change = change.value_or(0);
    reportOthers(item);
    return value;
}

void ScoreSettingsReader::readScenario()
{
    const std::string key = "scenario";
    if (!_settings.has(key))
        return;
    const Json& list = _settings.neededList(key);
    for (std::size_t i = 0; i < list.size(); ++i)
        _result.request.scenario.push_back(scenarioValue(_settings.objectAt(list, key, i)));
}

ScoreSettings ScoreSettingsReader::read()
{
    readFields();
    readForecast();
    readFit();
    readLevel();
    readScenario();
    _result.givesActual = _settings.flag("outputOriginalValue").value_or(false);
    reportOthers(_settings);
    return std::move(_result);
}

} // namespace

ScoreSettings scoreSettings(const StepCall& call, const ModelArchive& archive,
                            const TcmModel& model, PredictedBy by)
{
    const SeriesLookup lookup(archive, model, call.name);
    return ScoreSettingsReader(call, model, lookup, by).read();
}

} // namespace EmbeddedHV
