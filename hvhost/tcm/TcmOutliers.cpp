#include "hvhost/base/InterruptWatch.h"
#include "hvhost/input/DataFile.h"
#include "hvhost/input/Dataset.h"
#include "hvhost/input/KnownDataset.h"
#include "hvhost/tcm/OutlierTable.h"
#include "hvhost/tcm/TcmOutput.h"
#include "hvhost/tcm/TcmSession.h"

namespace {

using TcmJson = nlohmann::ordered_json;

/// All series, or one with what its outliers come from.
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

/// Documents name a series by one text, as the command line does.
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
        outliers.empty() ? "none\n" : std::to_string(outliers.size()) + " in all\n";
    result.parts.push_back({"Outliers", result.rows, {}, count});
    result.document = {{"model", name},
                       {"outlierLevel", artifacts.at(0).value("outlierLevel", TcmJson())},
                       {"outliers", withTexts(outliers)}};
    if (artifacts.size() > 1) {
        const TcmJson& origins = artifacts.at(1).at("outliers");
        result.parts.push_back({"Causes", originTable(origins), {}, {}});
        result.document["causes"] = withTexts(origins);
    }
    return result;
}

} // namespace

void tcmOutliers(const TcmOutliersOptions& options, const CommonOptions& common)
{
    const InterruptWatch watch(common.timeout);
    const TcmShown shown(options.shown, watch);
    const InputFile input(options.input, FileOptions::Offered, watch);
    TcmSession session("outliers", options.model, common, watch);
    const TcmModelFacts facts = session.facts();
    const TcmModelFacts::Series* const series =
        options.series.empty() ? nullptr : &facts.find(options.series, "--series");
    checkFields(facts, input);
    const KnownDataset known(*input.dataset());
    const TcmJson artifacts =
        session.artifacts(facts, &input, known.id(), outlierArtifacts(series));
    shown.show(outlierResult(facts.file, artifacts), session.host());
    input.finish();
    session.host().finish();
}
