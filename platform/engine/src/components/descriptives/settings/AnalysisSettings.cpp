#include "components/descriptives/settings/AnalysisSettings.h"

#include "components/descriptives/settings/PercentSettings.h"

namespace EmbeddedHV {
namespace {

std::string mergingTargetOf(const Settings& settings)
{
    if (!settings.flag("useSupervisedMerging").value_or(false))
        return {};
    std::string target = settings.text("targetField").value_or("");
    if (target.empty())
        settings.refuse("useSupervisedMerging", "is true, but there is no targetField");
    return target;
}

} // namespace

bool AnalysisSettings::any() const
{
    return !percents.empty() || outliers || pairs.wantsAny() || counts.any() || missingPatterns ||
           !mergingTarget.empty();
}

AnalysisSettings analysisSettings(const StepCall& call, const Settings& settings,
                                  const Fields& fields)
{
    AnalysisSettings result;
    result.percents = percentsOf(call, settings);
    result.outliers = outlierRuleOf(settings);
    result.pairs = pairRuleOf(fields, settings);
    result.counts = countSettings(settings);
    result.missingPatterns = settings.flag("computeMissingPatterns").value_or(false);
    result.fields = fieldRuleOf(settings);
    result.mergingTarget = mergingTargetOf(settings);
    return result;
}

} // namespace EmbeddedHV
