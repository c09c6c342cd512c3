#include "hvhost/tcm/TcmOutliers.h"

#include "hvhost/show/ResultWords.h"
#include "hvhost/tcm/ModelWork.h"
#include "hvhost/tcm/OutlierTable.h"

namespace {

using TcmJson = nlohmann::ordered_json;

/// Asks for the outliers of all series, or for those of one series and their causes.
TcmJson outlierArtifacts(const TcmModelFacts::Series* series)
{
    if (series == nullptr)
        return {{{"name", "outliers"}}};
    const TcmJson target = TcmJson::array({series->name});
    return {{{"name", "outliers"}, {"target", target}},
            {{"name", "rootCause"}, {"target", target}}};
}

ResultTable originTable(const TcmJson& origins)
{
    ResultTable table;
    table.columns = {{"outlier", CFField::String},
                     {"cause", CFField::String},
                     {"at", CFField::String},
                     {"residual", CFField::Real},
                     {"contribution", CFField::Real}};
    table.keyCount = 2;
    for (const TcmJson& origin : origins)
        for (const TcmJson& cause : origin.at("causes"))
            table.rows.push_back({pointTextOf(origin.at("time")),
                                  seriesText(cause.at("name").get<SeriesName>()),
                                  pointTextOf(cause.at("time")), tcmNumber(cause.at("residual")),
                                  tcmNumber(cause.at("contribution"))});
    return table;
}

/// Replaces the name of each series by one text, as on the command line.
TcmJson withTexts(TcmJson list)
{
    for (TcmJson& object : list) {
        object["series"] = seriesText(object.at("name").get<SeriesName>());
        object.erase("name");
        if (object.contains("causes"))
            object["causes"] = withTexts(object["causes"]);
    }
    return list;
}

TcmResult outlierResult(const std::string& name, const TcmJson& artifacts)
{
    const TcmJson& outliers = artifacts.at(0).at("outliers");
    TcmResult result;
    result.name = name;
    result.rows = outlierTable(outliers);
    const std::string count =
        (outliers.empty() ? word("none")
                          : sentence("^1 in all", {std::to_string(outliers.size())})) +
        "\n";
    result.parts.push_back({word("Outliers"), result.rows, {}, count});
    result.document = {{"model", name},
                       {"outlierLevel", artifacts.at(0).value("outlierLevel", TcmJson())},
                       {"outliers", withTexts(outliers)}};
    if (artifacts.size() > 1) {
        const TcmJson& origins = artifacts.at(1).at("outliers");
        result.parts.push_back({word("Causes"), originTable(origins), {}, {}});
        result.document["causes"] = withTexts(origins);
    }
    return result;
}

} // namespace

void tcmOutliers(const TcmOutliersOptions& options, const CommonOptions& common)
{
    ModelWork work("outliers", options.model, options.input, options.shown, common);
    const TcmModelFacts& facts = work.facts();
    const TcmModelFacts::Series* const series =
        options.series.empty() ? nullptr : &facts.find(options.series, "--series");
    const std::uint32_t dataset = work.dataset();
    const TcmJson artifacts =
        work.session().artifacts(facts, work.data(), dataset, outlierArtifacts(series));
    work.finish(outlierResult(facts.file, artifacts));
}
