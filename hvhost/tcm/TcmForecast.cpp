#include "hvhost/tcm/TcmForecast.h"

#include <algorithm>

#include "VexaCases.h"
#include "base/NumberText.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/base/ValueText.h"
#include "hvhost/show/ResultWords.h"
#include "hvhost/tcm/ModelWork.h"
#include "hvhost/tcm/ScenarioOptions.h"
#include "hvhost/tcm/TcmCharts.h"
#include "tcm/HVInteractiveTSR.h"

namespace {

using TcmJson = nlohmann::ordered_json;

std::vector<std::string> timeTexts(const HVSeriesForecast& forecast)
{
    std::vector<std::string> texts;
    for (const HVSeriesPoint& point : forecast.points) {
        std::string& text = texts.emplace_back();
        for (std::size_t field = 0; field < point.time.size(); ++field)
            text += (field == 0 ? "" : " ") +
                    numberText(point.time[field], forecast.timeFields[field].GetStorage());
    }
    return texts;
}

std::optional<std::string> valueCell(double value)
{
    return value == kSystemMissing ? std::nullopt : std::optional(base::shortestNumber(value));
}

TcmJson valueJson(double value)
{
    return value == kSystemMissing ? TcmJson() : TcmJson(value);
}

/// A column for each time field, then the values of each point.
ResultTable pointTable(const HVSeriesForecast& forecast, bool isFutureAlone)
{
    ResultTable table;
    for (const CFField& field : forecast.timeFields)
        table.columns.push_back({.name = field.GetName(), .isField = true});
    table.keyCount = table.columns.size();
    if (!isFutureAlone)
        table.columns.push_back({"actual", CFField::Real});
    for (const char* name : {"predicted", "lower", "upper"})
        table.columns.push_back({name, CFField::Real});
    for (const HVSeriesPoint& point : forecast.points) {
        if (isFutureAlone && !point.isFuture)
            continue;
        ResultTable::Row row;
        for (std::size_t field = 0; field < point.time.size(); ++field)
            row.push_back(numberText(point.time[field], forecast.timeFields[field].GetStorage()));
        if (!isFutureAlone)
            row.push_back(valueCell(point.actual));
        for (const double value : {point.predicted, point.lower, point.upper})
            row.push_back(valueCell(value));
        table.rows.push_back(std::move(row));
    }
    return table;
}

/// On a page the first column names the rows, so several time fields become one.
ResultTable withOneTime(ResultTable table)
{
    if (table.keyCount < 2)
        return table;
    for (ResultTable::Row& row : table.rows) {
        for (std::size_t field = 1; field < table.keyCount; ++field)
            *row[0] += " " + *row[field];
        row.erase(row.begin() + 1, row.begin() + static_cast<std::ptrdiff_t>(table.keyCount));
    }
    for (std::size_t field = 1; field < table.keyCount; ++field)
        table.columns[0].name += " " + table.columns[field].name;
    table.columns.erase(table.columns.begin() + 1,
                        table.columns.begin() + static_cast<std::ptrdiff_t>(table.keyCount));
    table.keyCount = 1;
    return table;
}

TcmJson pointsJson(const HVSeriesForecast& forecast, const std::vector<std::string>& times)
{
    TcmJson points = TcmJson::array();
    for (std::size_t at = 0; at < times.size(); ++at) {
        const HVSeriesPoint& point = forecast.points[at];
        points.push_back({{"time", times[at]},
                          {"future", point.isFuture},
                          {"actual", valueJson(point.actual)},
                          {"predicted", valueJson(point.predicted)},
                          {"lower", valueJson(point.lower)},
                          {"upper", valueJson(point.upper)}});
    }
    return points;
}

/// One series of a model on a dataset.
class SeriesForecasting
{
public:
    SeriesForecasting(ModelWork& work, const SeriesName& series) : _work(work), _series(series) {}

    HVSeriesForecast run(const HVForecastRequest& request)
    {
        HVSeriesForecast forecast;
        const std::uint32_t dataset = _work.dataset();
        TcmSession& session = _work.session();
        session.perform(
            [&](HVInteractiveTSR& viewer) {
                return viewer.getForecast(dataset, session.modelPath(), _series.back(),
                                          _work.facts().dimensions,
                                          {_series.begin(), _series.end() - 1}, request, forecast);
            },
            _work.data());
        return forecast;
    }

    /// The points of the forecast, to find those that --set names by their time.
    std::vector<std::string> futureTimes(HVForecastRequest request)
    {
        request.scenario.clear();
        HVSeriesForecast forecast = run(request);
        std::erase_if(forecast.points, [](const HVSeriesPoint& point) { return !point.isFuture; });
        return timeTexts(forecast);
    }

private:
    ModelWork& _work;
    const SeriesName& _series;
};

TcmResult forecastResult(const TcmModelFacts& facts, const TcmForecastOptions& options,
                         const std::string& series, const HVSeriesForecast& forecast)
{
    const std::vector<std::string> times = timeTexts(forecast);
    TcmResult result;
    result.name = facts.file;
    result.rows = pointTable(forecast, false);
    const std::string bounds =
        sentence("bounds: ^1 %; fits are one step ahead", {localNumber(options.confidence)}) + "\n";
    result.parts = {
        {series, {}, forecastChart(series, forecast, times), {}},
        {sentence("Forecast of ^1", {series}), withOneTime(pointTable(forecast, true)), {}, bounds},
        {sentence("Values of ^1", {series}), withOneTime(result.rows), {}, {}, true}};
    result.document = {{"model", facts.file},
                       {"series", series},
                       {"confidence", options.confidence},
                       {"points", pointsJson(forecast, times)}};
    return result;
}

} // namespace

void tcmForecast(const TcmForecastOptions& options, const CommonOptions& common)
{
    ModelWork work("forecast", options.model, options.input, options.shown, common);
    const TcmModelFacts& facts = work.facts();
    const SeriesName& series = facts.find(options.series, "--series").name;
    const std::vector<ScenarioOption> scenario = parseScenario(options.scenario, facts);
    SeriesForecasting forecasting(work, series);
    HVForecastRequest request{options.horizon, options.confidence / 100, {}};
    const bool needsTimes = std::ranges::any_of(scenario, &ScenarioOption::namesTime);
    request.scenario = placedScenario(scenario, needsTimes ? forecasting.futureTimes(request)
                                                           : std::vector<std::string>());
    const HVSeriesForecast forecast = forecasting.run(request);
    InterruptWatch::Abandonable building(work.watch());
    const TcmResult result = forecastResult(facts, options, seriesText(series), forecast);
    building.end();
    work.finish(result);
}
