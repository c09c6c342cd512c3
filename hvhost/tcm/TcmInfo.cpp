#include "hvhost/tcm/TcmInfo.h"

#include <array>

#include "SvrDMDataset.h"
#include "base/NumberText.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/base/ValueText.h"
#include "hvhost/show/ResultWords.h"
#include "hvhost/tcm/ModelWork.h"
#include "hvhost/tcm/OutlierTable.h"
#include "hvhost/tcm/TcmCharts.h"

namespace {

using TcmJson = nlohmann::ordered_json;

/// A member of the engine's "fit", and its name in a table.
struct FitColumn
{
    const char* key;
    const char* name;
    CFField::StorageType storage = CFField::Real;
};
constexpr std::array<FitColumn, 12> kFitColumns = {{{"observations", "N", CFField::Integer},
                                                    {"parameters", "Parameters", CFField::Integer},
                                                    {"rSquared", "R²"},
                                                    {"adjustedRSquared", "Adjusted R²"},
                                                    {"rmse", "RMSE"},
                                                    {"rmspe", "RMSPE"},
                                                    {"mae", "MAE"},
                                                    {"aic", "AIC"},
                                                    {"bic", "BIC"},
                                                    {"durbinWatson", "Durbin-Watson"},
                                                    {"ljungBox", "Ljung-Box"},
                                                    {"ljungBoxPValue", "p (Ljung-Box)"}}};

/// Days of a week from 1, Monday, as --working-days accepts them.
std::string dayList(const TcmJson& days)
{
    constexpr std::array<const char*, 8> kDayNames = {"",    "mon", "tue", "wed",
                                                      "thu", "fri", "sat", "sun"};
    std::string text;
    for (const TcmJson& day : days)
        text += (text.empty() ? "" : ",") + std::string(kDayNames.at(day.get<std::size_t>()));
    return text;
}

std::string intervalText(const TcmJson& interval)
{
    if (!interval.is_object() || !interval.contains("unit"))
        return {};
    const int count = interval.value("increment", 1);
    const auto unit = interval["unit"].get<std::string>();
    std::string text = count == 1 ? word("every " + unit)
                                  : sentence("every ^1 " + unit + "s", {std::to_string(count)});
    if (interval.contains("workingDays"))
        text += sentence(" of ^1", {dayList(interval["workingDays"])});
    if (interval.contains("workingHours"))
        text += sentence(", hours ^1-^2",
                         {std::to_string(interval["workingHours"].at("from").get<int>()),
                          std::to_string(interval["workingHours"].at("to").get<int>())});
    return text;
}

std::string listed(const std::vector<std::string>& names)
{
    std::string text;
    for (const std::string& name : names)
        text += (text.empty() ? "" : ", ") + name;
    return text.empty() ? word("none") : text;
}

std::string summaryOf(const TcmModelFacts& facts)
{
    std::string text = sentence("dimensions: ^1", {listed(facts.dimensions)}) + "\n" +
                       sentence("metrics: ^1", {listed(facts.metrics)}) + "\n" +
                       sentence("time: ^1, ^2 points, ^3 to ^4",
                                {listed(facts.timeFields), std::to_string(facts.timePoints),
                                 facts.firstPoint, facts.lastPoint});
    if (const std::string interval = intervalText(facts.interval); !interval.empty())
        text += ", " + interval;
    return text + "\n";
}

ResultTable seriesTable(const TcmModelFacts& facts)
{
    ResultTable table;
    table.columns = {{"series", CFField::String},
                     {"target", CFField::String},
                     {"observed", CFField::Integer},
                     {"filled", CFField::Integer}};
    table.columns[1].hasWords = true;
    table.keyCount = 1;
    for (const TcmModelFacts::Series& series : facts.series)
        table.rows.push_back({seriesText(series.name), series.isTarget ? "yes" : "no",
                              tcmNumber(series.observed), tcmNumber(series.filled)});
    return table;
}

/// A row for each predictor of each target.
ResultTable edgeTable(const TcmModelFacts& facts)
{
    ResultTable table;
    table.columns = {{"target", CFField::String}, {"predictor", CFField::String},
                     {"lag", CFField::Integer},   {"effect", CFField::Real},
                     {"F", CFField::Real},        {"p", CFField::Real}};
    table.keyCount = 2;
    for (const TcmModelFacts::Edge& edge : facts.edges)
        table.rows.push_back({seriesText(edge.target), seriesText(edge.predictor),
                              std::to_string(edge.lag), base::shortestNumber(edge.coefficientSum),
                              tcmNumber(edge.f), base::shortestNumber(edge.pValue)});
    return table;
}

ResultTable fitTable(const TcmJson& fit)
{
    ResultTable table;
    table.columns.push_back({"target", CFField::String});
    for (const FitColumn& column : kFitColumns)
        table.columns.push_back({column.name, column.storage});
    table.keyCount = 1;
    for (const TcmJson& target : fit) {
        ResultTable::Row row{seriesText(target.at("name").get<SeriesName>())};
        for (const FitColumn& column : kFitColumns)
            row.push_back(tcmNumber(target.value(column.key, TcmJson())));
        table.rows.push_back(std::move(row));
    }
    return table;
}

TcmJson seriesJson(const TcmModelFacts& facts)
{
    TcmJson list = TcmJson::array();
    for (const TcmModelFacts::Series& series : facts.series)
        list.push_back({{"name", seriesText(series.name)},
                        {"target", series.isTarget},
                        {"observed", series.observed},
                        {"filled", series.filled}});
    return list;
}

/// The predictors by target, the target's own past among them.
TcmJson equationsJson(const TcmModelFacts& facts)
{
    TcmJson list = TcmJson::array();
    const SeriesName* target = nullptr;
    for (const TcmModelFacts::Edge& edge : facts.edges) {
        if (target == nullptr || *target != edge.target)
            list.push_back({{"target", seriesText(edge.target)}, {"predictors", TcmJson::array()}});
        target = &edge.target;
        list.back()["predictors"].push_back({{"series", seriesText(edge.predictor)},
                                             {"lag", edge.lag},
                                             {"effect", edge.coefficientSum},
                                             {"f", edge.f},
                                             {"p", edge.pValue},
                                             {"ownPast", edge.isOwnPast()}});
    }
    return list;
}

/// The fit statistics of the targets.
TcmJson fitJson(const TcmJson& fit)
{
    TcmJson list = TcmJson::array();
    for (const TcmJson& target : fit) {
        TcmJson object{{"target", seriesText(target.at("name").get<SeriesName>())}};
        for (const FitColumn& column : kFitColumns)
            object[column.key] = target.value(column.key, TcmJson());
        list.push_back(std::move(object));
    }
    return list;
}

TcmResult infoResult(const TcmModelFacts& facts, const TcmJson& artifacts)
{
    const TcmJson& fit = artifacts.at(0).at("targets");
    const TcmJson& outliers = artifacts.at(1).at("outliers");
    TcmResult result;
    result.name = facts.file;
    result.rows = edgeTable(facts);
    result.parts = {{word("Series"), seriesTable(facts), {}, summaryOf(facts)},
                    {word("Network"), {}, networkChart(facts), {}},
                    {word("Equations"), result.rows, {}, {}},
                    {word("Fit"), fitTable(fit), {}, {}},
                    {word("Outliers"), outlierTable(outliers), {}, {}}};
    result.document = {{"model", facts.file},
                       {"dimensions", facts.dimensions},
                       {"metrics", facts.metrics},
                       {"time",
                        {{"fields", facts.timeFields},
                         {"interval", facts.interval},
                         {"points", facts.timePoints},
                         {"first", facts.firstPoint},
                         {"last", facts.lastPoint}}},
                       {"series", seriesJson(facts)},
                       {"leftOut", facts.leftOut},
                       {"equations", equationsJson(facts)},
                       {"fit", fitJson(fit)}};
    return result;
}

} // namespace

void tcmInfo(const TcmInfoOptions& options, const CommonOptions& common)
{
    ModelWork work("info", options.model, {}, options.shown, common);
    const TcmJson artifacts = work.session().artifacts(
        work.facts(), nullptr, kNoDataset, TcmJson{{{"name", "fit"}}, {{"name", "outliers"}}});
    work.finish(infoResult(work.facts(), artifacts));
}
