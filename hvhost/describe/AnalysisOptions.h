#pragma once

#include <string>
#include <vector>

#include "hvhost/base/JobOrigin.h"

class HVDescriptive;

namespace CLI {
class App;
}

/// The analyses that a user requests in addition to the statistics.
struct AnalysisOptions
{
    std::vector<double> percentiles;
    bool outliers = false;
    std::string outlierMethod;   ///< iqr, sd or mad; empty: iqr
    std::string outlierHandling; ///< mark, trim or winsorize; empty: mark
    bool missingPatterns = false;
    bool pairs = false;
    std::string target; ///< a variable; empty for none

    bool wantsOutliers() const
    {
        return outliers || !outlierMethod.empty() || !outlierHandling.empty();
    }
    bool wantsPairs() const { return pairs || !target.empty(); }
    /// The percents as texts, ascending, each once.
    std::vector<std::string> percents() const;
};

/// Adds the options to a command.
void addAnalysisOptions(CLI::App& command, AnalysisOptions& options);

/// Puts the options into the settings of a job. `target` is the variable's name in the dataset.
void applyAnalyses(const AnalysisOptions& options, const std::string& target,
                   HVDescriptive& descriptive);

/// The settings of a job that the options set, for errors.
std::vector<JobOrigin::Setting> analysisSettings(const AnalysisOptions& options);
