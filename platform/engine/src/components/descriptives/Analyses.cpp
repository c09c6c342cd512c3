#include "components/descriptives/Analyses.h"

#include <algorithm>

#include "components/descriptives/outliers/Outliers.h"
#include "components/descriptives/pairs/PairPlan.h"
#include "components/descriptives/pairs/Pairs.h"
#include "components/descriptives/percentiles/Percentiles.h"
#include "components/descriptives/summary/FieldParts.h"

namespace EmbeddedHV {

namespace {

/// The analyses of single fields.
void analyseFields(const ComponentQueries& queries, const InputTable& table,
                   const AnalysisSettings& settings, DataSummary& summary)
{
    fillPercentiles(queries, table, settings.percents, summary);
}

bool wantsFieldAnalyses(const AnalysisSettings& settings)
{
    return !settings.percents.empty();
}

} // namespace

void analyse(const ComponentQueries& queries, const InputTable& table,
             const DescriptivesSettings& settings, const std::string& partName,
             DataSummary& summary)
{
    const AnalysisSettings& analyses = settings.analyses;
    // First, because it may change values.
    handleOutliers(queries, table, settings, partName, summary);
    if (wantsFieldAnalyses(analyses))
        forFieldParts(queries, table, partName, summary,
                      [&](const InputTable& part, DataSummary& some) {
                          analyseFields(queries, part, analyses, some);
                      });
    fillPairs(queries, table, partName, analyses.pairs, summary);
}

std::vector<FaultParts> analysisRemarks(const DataSummary& summary,
                                        const AnalysisSettings& settings)
{
    std::vector<FaultParts> remarks;
    const std::vector<std::string>& targets = settings.pairs.targets;
    for (const FieldSummary& field : summary.fields) {
        const std::string& name = field.field.GetName();
        if (std::ranges::find(targets, name) != targets.end() && !isPaired(field))
            remarks.push_back({.setting = "computeAllTargetInputPairs",
                               .what = "cannot compare the field \"" + name +
                                       "\": it is neither a number nor a category whose values "
                                       "are listed"});
    }
    return remarks;
}

} // namespace EmbeddedHV
