#include "components/descriptives/Analyses.h"

#include <algorithm>

#include "components/descriptives/counts/Durations.h"
#include "components/descriptives/counts/NumberBins.h"
#include "components/descriptives/counts/ZeroInflation.h"
#include "components/descriptives/merging/CategoryGroups.h"
#include "components/descriptives/missing/MissingPatternCounts.h"
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
    if (settings.counts.bins)
        fillBins(queries, table, settings.counts.equalFrequencies, summary);
    if (settings.counts.zeroInflation)
        fillZeroInflation(queries, table, summary);
    fillDurations(queries, table, settings.counts, summary);
}

bool wantsFieldAnalyses(const AnalysisSettings& settings)
{
    return !settings.percents.empty() || settings.counts.any();
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
    if (analyses.missingPatterns)
        fillMissingPatterns(queries, table, partName, summary);
    fillPairs(queries, table, partName, analyses.pairs, summary);
    if (!analyses.mergingTarget.empty())
        fillCategoryGroups(queries, table, partName, analyses.mergingTarget, summary);
}

std::vector<FaultParts> analysisRemarks(const DataSummary& summary,
                                        const AnalysisSettings& settings)
{
    std::vector<FaultParts> remarks;
    if (settings.missingPatterns && !canCountPatterns(summary))
        remarks.push_back({.setting = "computeMissingPatterns",
                           .what = "cannot count patterns of missing values: more than " +
                                   std::to_string(kMostPatternFields) +
                                   " fields have missing values"});
    const std::vector<std::string>& targets = settings.pairs.targets;
    for (const FieldSummary& field : summary.fields) {
        const std::string& name = field.field.GetName();
        if (std::ranges::find(targets, name) != targets.end() && !isPaired(field))
            remarks.push_back({.setting = "computeAllTargetInputPairs",
                               .what = "cannot compare the field \"" + name +
                                       "\": it is neither a number nor a category whose values "
                                       "are listed"});
        if (name == settings.mergingTarget && !canMerge(field))
            remarks.push_back({.setting = "useSupervisedMerging",
                               .what = "cannot merge categories by the field \"" + name +
                                       "\": it is not a category with at most " +
                                       std::to_string(kMostMerged) + " listed values"});
    }
    return remarks;
}

} // namespace EmbeddedHV
