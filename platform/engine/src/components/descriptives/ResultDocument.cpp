#include "components/descriptives/ResultDocument.h"

#include "components/descriptives/FieldCharts.h"
#include "components/descriptives/FrequencyTable.h"
#include "components/descriptives/IntervalTable.h"
#include "components/descriptives/StatisticsTable.h"
#include "components/descriptives/missing/MissingPatternTable.h"
#include "components/descriptives/outliers/BoxPlot.h"
#include "components/descriptives/outliers/OutlierTable.h"
#include "components/descriptives/pairs/PairChart.h"
#include "components/descriptives/pairs/PairTable.h"
#include "components/descriptives/percentiles/PercentileTable.h"
#include "components/result/FieldModel.h"
#include "components/result/TextItem.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kName = "descriptives";
constexpr const char* kWarning = "Warning";
constexpr const char* kComment = "Comment";

/// Builds the result object.
class Results
{
public:
    explicit Results(const DataSummary& summary) : _isWeighted(summary.weightField.has_value()) {}

    void notify(Json text, const char* severity)
    {
        text["severity"] = severity;
        _notifications.push_back(std::move(text));
    }

    void addStatistics(const DataSummary& summary, bool withSummaries)
    {
        if (summary.fields.empty())
            notify(text::fixed("There is no field to describe."), kWarning);
        else
            _object["statistics"]["table"] = statisticsTable(summary, withSummaries);
    }

    void addIntervals(const std::vector<TimeInterval>& intervals)
    {
        if (!intervals.empty())
            _object["intervals"]["table"] = intervalTable(intervals);
    }

    void addAnalyses(const DataSummary& summary, const AnalysisSettings& settings)
    {
        addTable("percentiles", percentileTable(summary));
        if (settings.outliers)
            addTable("outliers", outlierTable(summary, *settings.outliers));
        addTable("missingPatterns", missingPatternTable(summary));
        addTable("pairs", pairTable(summary));
        if (const auto chart = pairChart(summary, settings.pairs))
            _object["pairs"]["chart"] = *chart;
    }

    /// `key` contains no dot, because a dot separates keys in a path to a place in the document.
    void addField(const FieldSummary& field, const std::string& key, bool withSummaries)
    {
        if (const auto box = boxPlot(field))
            _object["boxes"][key] = *box;
        if (isCategorical(field.field))
            addFrequencies(field, key);
        else if (withSummaries && field.valid > 0)
            addHistogram(field, key);
    }

    Json json() const
    {
        Json result = {{"notifications", _notifications}};
        result.update(_object);
        return result;
    }

private:
    void addTable(const char* key, Json table)
    {
        if (!table.is_null())
            _object[key]["table"] = std::move(table);
    }

    /// The frequencies were computed but not requested.
    static bool areWithheld(const FieldSummary& field)
    {
        return field.distinct && field.distribution.empty();
    }

    void addFrequencies(const FieldSummary& field, const std::string& key)
    {
        if (hasFrequencies(field)) {
            _object["frequencies"][key] = frequencyTable(field, key, _isWeighted);
            _object["bars"][key] = barChart(field, key, _isWeighted);
        } else if (field.valid > 0 && !areWithheld(field)) {
            tell(field, " has too many different values; no frequencies are shown.");
        }
    }

    void addHistogram(const FieldSummary& field, const std::string& key)
    {
        const auto chart = field.histogram ? histogramChart(field, key, _isWeighted) : std::nullopt;
        if (chart)
            _object["histograms"][key] = *chart;
        else
            tell(field, " has values beyond the range of charts: no histogram is shown.");
    }

    void tell(const FieldSummary& field, const char* what)
    {
        notify(text::composite({text::field(field.field.GetName()), text::fixed(what)}), kComment);
    }

    bool _isWeighted;
    Json _notifications = Json::array();
    Json _object = Json::object();
};

} // namespace

std::string resultDocument(const DataSummary& summary, const DescriptivesSettings& settings,
                           const std::vector<std::string>& remarks,
                           const std::vector<TimeInterval>& intervals)
{
    Results results(summary);
    for (const std::string& remark : remarks)
        results.notify(text::plain(remark), kWarning);
    results.addStatistics(summary, settings.summaries);
    results.addAnalyses(summary, settings.analyses);
    results.addIntervals(intervals);
    for (std::size_t i = 0; i < summary.fields.size(); ++i)
        results.addField(summary.fields[i], "f" + std::to_string(i + 1), settings.summaries);
    const Json document = {{"dataModel", fieldModel(kName, fieldsOf(summary))},
                           {kName, results.json()}};
    // Names and texts may contain invalid UTF-8.
    return document.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

} // namespace EmbeddedHV
