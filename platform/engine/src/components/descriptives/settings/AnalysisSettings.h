#pragma once

#include <optional>
#include <string>
#include <vector>

#include "components/descriptives/settings/CountSettings.h"
#include "components/descriptives/settings/FieldRule.h"
#include "components/descriptives/settings/OutlierRule.h"
#include "components/descriptives/settings/PairRule.h"
#include "steps/StepCall.h"

namespace EmbeddedHV {

/// The analyses that the configuration requests in addition to the summaries.
struct AnalysisSettings
{
    std::vector<double> percents; ///< from 0 to 100, ascending, each once
    std::optional<OutlierRule> outliers;
    PairRule pairs;
    CountSettings counts;
    bool missingPatterns = false;
    FieldRule fields;
    /// The field by which categories are merged; empty for none.
    std::string mergingTarget;

    /// Whether there is an analysis of the records. The rule of the fields is not one.
    bool any() const;
};

/// Reads the settings of the analyses. `fields` are those to be described. Throws JobError.
AnalysisSettings analysisSettings(const StepCall& call, const Settings& settings,
                                  const Fields& fields);

} // namespace EmbeddedHV
