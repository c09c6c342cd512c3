#include "components/result/ValueFormat.h"
#include "components/temporal/explanation/DataOutliers.h"
#include "components/temporal/explanation/StatisticsJson.h"

namespace EmbeddedHV::statistics {
namespace {

constexpr std::size_t kMostListedOutliers = 100'000;
constexpr std::size_t kMostExplainedOutliers = 10;
constexpr std::size_t kMostShocks = 20;

void addTime(const Explanation& explanation, std::int64_t index, Json& object)
{
    object["timeIndex"] = index;
    object["time"] = explanation.labels().json(index);
}

Json outlierObject(const Explanation& explanation, const SeriesOutlier& outlier)
{
    Json object = seriesObject(explanation, outlier.series);
    addTime(explanation, outlier.timeIndex, object);
    object["actual"] = numberJson(outlier.actual);
    object["predicted"] = numberJson(outlier.predicted);
    object["residual"] = numberJson(outlier.actual - outlier.predicted);
    object["pValue"] = numberJson(outlier.pValue);
    return object;
}

Json pathOf(const Explanation& explanation, const std::vector<SeriesPoint>& path)
{
    Json points = Json::array();
    for (const SeriesPoint& point : path) {
        Json object = {{"id", explanation.series(point.series).id}};
        addTime(explanation, point.timeIndex, object);
        points.push_back(std::move(object));
    }
    return points;
}

Json shockObject(const Explanation& explanation, const OriginShock& shock)
{
    Json object = seriesObject(explanation, shock.at.series);
    addTime(explanation, shock.at.timeIndex, object);
    object["residual"] = numberJson(shock.residual);
    object["contribution"] = numberJson(shock.contribution);
    object["path"] = pathOf(explanation, shock.path);
    object["pathContribution"] = numberJson(shock.pathContribution);
    return object;
}

Json originObject(const Explanation& explanation, const SeriesOutlier& outlier, std::int64_t level)
{
    const OutlierOrigin origin = explanation.originOf(outlier, level, kMostShocks);
    Json object = outlierObject(explanation, outlier);
    object["firstTimeIndex"] = origin.firstIndex;
    object["forecast"] = numberJson(outlier.actual - origin.departure);
    object["departure"] = numberJson(origin.departure);
    object["causes"] = Json::array();
    for (const OriginShock& shock : origin.shocks)
        object["causes"].push_back(shockObject(explanation, shock));
    object["otherCauses"] = numberJson(origin.others);
    return object;
}

} // namespace

void addOutliers(ArtifactText& text, const Explanation& explanation, const ArtifactRequest& request)
{
    text.add("outlierLevel", explanation.model().outlierLevel);
    const std::vector<SeriesOutlier> all = explanation.outliersOf(request.targets);
    text.add("count", all.size());
    text.startList("outliers");
    for (const SeriesOutlier& outlier : leastLikely(all, kMostListedOutliers)) {
        explanation.check();
        text.addElement(outlierObject(explanation, outlier));
    }
    text.endList();
}

void addRootCauses(ArtifactText& text, const Explanation& explanation,
                   const ArtifactRequest& request, std::size_t target)
{
    text.startList("outliers");
    for (const SeriesOutlier& outlier :
         leastLikely(explanation.outliersOf({target}), kMostExplainedOutliers))
        text.addElement(originObject(explanation, outlier, request.level));
    text.endList();
}

} // namespace EmbeddedHV::statistics
