#include "components/descriptives/settings/AnalysisSettings.h"

#include "components/descriptives/settings/PercentSettings.h"

namespace EmbeddedHV {

AnalysisSettings analysisSettings(const StepCall& call, const Settings& settings,
                                  const Fields& fields)
{
    AnalysisSettings result;
    result.percents = percentsOf(call, settings);
    result.outliers = outlierRuleOf(settings);
    result.pairs = pairRuleOf(fields, settings);
    result.fields = fieldRuleOf(settings);
    return result;
}

} // namespace EmbeddedHV
