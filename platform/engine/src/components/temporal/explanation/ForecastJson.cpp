#include "components/result/ValueFormat.h"
#include "components/temporal/explanation/SeriesCharts.h"
#include "components/temporal/explanation/StatisticsJson.h"

namespace EmbeddedHV::statistics {
namespace {

Json forecastPoints(const Explanation& explanation, const Scores& scores,
                    const SeriesScores& series)
{
    Json points = Json::array();
    for (Eigen::Index point = 0; point < series.predicted.size(); ++point) {
        explanation.check();
        const std::int64_t index = scores.firstIndex + point;
        points.push_back({{"timeIndex", index},
                          {"time", explanation.labels().json(index)},
                          {"isFuture", point >= scores.records},
                          {"actual", numberJson(series.actual(point))},
                          {"predicted", numberJson(series.predicted(point))},
                          {"lower", numberJson(series.lower(point))},
                          {"upper", numberJson(series.upper(point))}});
    }
    return points;
}

} // namespace

void addForecast(ArtifactText& text, const Explanation& explanation, const ArtifactRequest& request)
{
    const Scores scores = explanation.scoresOf(explanation::scoringRequest(request));
    text.add("forecastSpan", request.span);
    text.add("confidenceLevel", request.confidenceLevel);
    Json remarks = Json::array();
    for (const FaultParts& remark : scores.remarks)
        remarks.push_back(sentenceOf(remark));
    text.add("remarks", remarks);
    text.startList("series");
    for (const SeriesScores& series : scores.series) {
        Json object = seriesObject(explanation, series.series);
        object["points"] = forecastPoints(explanation, scores, series);
        text.addElement(object);
    }
    text.endList();
}

} // namespace EmbeddedHV::statistics
