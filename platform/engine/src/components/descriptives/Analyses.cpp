#include "components/descriptives/Analyses.h"

#include "components/descriptives/outliers/Outliers.h"
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
}

} // namespace EmbeddedHV
