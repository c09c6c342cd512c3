#include "components/temporal/scoring/Scenario.h"

#include <algorithm>

#include "ErrorIds.h"
#include "JobError.h"

namespace EmbeddedHV {
namespace {

/// The columns that an item of the scenario sets: first, and how many.
std::pair<Eigen::Index, Eigen::Index> columnsOfItem(const SeriesPath& path,
                                                    const ScenarioValue& item,
                                                    const ModelSeries& series,
                                                    const std::string& component)
{
    const std::int64_t span = path.values.cols() - path.end;
    if (!item.ahead && !item.timeIndex)
        return {path.end, span};
    const std::int64_t lastIndex = path.firstIndex + path.end - 1;
    const bool isCounted = item.ahead.has_value();
    const std::int64_t wanted = isCounted ? *item.ahead : *item.timeIndex;
    const std::int64_t before = isCounted ? 0 : lastIndex;
    if (wanted <= before || wanted > before + span)
        throw JobError(errors::kScenarioTime,
                       {.step = component,
                        .series = series.name,
                        .limit = before + span,
                        .what = "the scenario sets the series " + shownName(series) + " at " +
                                (isCounted ? "point " + std::to_string(wanted) + " of the forecast"
                                           : "the time index " + std::to_string(wanted)) +
                                ", but the forecast has " +
                                (span == 0 ? "no point"
                                           : "the points " + std::to_string(before + 1) + " to " +
                                                 std::to_string(before + span))});
    return {path.end + (wanted - before) - 1, 1};
}

double valueOfItem(const ScenarioValue& item, double forecast)
{
    return item.value ? *item.value : forecast * (1 + item.change);
}

} // namespace

void setScenario(SeriesPath& path, const SeriesSystem& system, const TcmModel& model,
                 const ScoringRequest& request, const std::string& component,
                 std::vector<FaultParts>& remarks)
{
    for (const ScenarioValue& item : request.scenario) {
        const ModelSeries& series = model.series[item.series];
        const auto [first, count] = columnsOfItem(path, item, series, component);
        const auto place = std::find(system.places.begin(), system.places.end(), item.series);
        if (place == system.places.end()) {
            remarks.push_back({.step = component,
                               .series = series.name,
                               .what = "the scenario sets the series " + shownName(series) +
                                       ", on which no series asked for depends: it has no effect"});
            continue;
        }
        const Eigen::Index row = place - system.places.begin();
        for (Eigen::Index point = first; point < first + count; ++point) {
            if (path.sources(row, point) == ValueSource::Set)
                throw JobError(errors::kScenarioTime,
                               {.step = component,
                                .series = series.name,
                                .what = "the scenario sets the series " + shownName(series) +
                                        " twice at point " + std::to_string(point - path.end + 1) +
                                        " of the forecast"});
            path.values(row, point) = valueOfItem(item, path.values(row, point));
            path.sources(row, point) = ValueSource::Set;
        }
    }
}

} // namespace EmbeddedHV
