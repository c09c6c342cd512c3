#include "hvhost/describe/AnalysisOptions.h"

#include <map>
#include <set>

#include <CLI/CLI.hpp>

#include "base/ListText.h"
#include "base/NumberText.h"
#include "descriptive/HVDescriptive.h"
#include "hvhost/input/OptionChecks.h"

namespace {

/// The words of the command line, and those of the engine.
const std::map<std::string, std::string> kMethods = {{"iqr", "interquartileRange"},
                                                     {"sd", "standardDeviation"},
                                                     {"mad", "medianDeviation"}};
const std::map<std::string, std::string> kHandlings = {{"mark", "markOut"},
                                                       {"trim", "trim"},
                                                       {"winsorize", "winsorize"}};

constexpr const char* kGroup = "Analyses";

} // namespace

std::vector<std::string> AnalysisOptions::percents() const
{
    std::vector<std::string> texts;
    for (const double percent : std::set(percentiles.begin(), percentiles.end()))
        texts.push_back(base::shortestNumber(percent));
    return texts;
}

std::vector<JobOrigin::Setting> analysisSettings(const AnalysisOptions& options)
{
    return {{"computeCustomPercentiles", "--percentiles"},
            {"computeMissingPatterns", "--missing-patterns"},
            {"computeBivStatsForBDP", "--pairs"},
            {"computeAllTargetInputPairs", "--target " + options.target}};
}

void addAnalysisOptions(CLI::App& command, AnalysisOptions& options)
{
    command
        .add_option("--percentiles", options.percentiles,
                    "Show these percentiles, for example 1,5,95,99")
        ->type_name("PERCENT")
        ->group(kGroup)
        ->delimiter(',')
        ->allow_extra_args(false)
        ->check(percentNumber());
    command.add_flag("--outliers", options.outliers, "Find the outliers of each number")
        ->group(kGroup);
    command
        .add_option("--outlier-method", options.outlierMethod,
                    "Outliers are beyond 1.5 interquartile ranges (iqr), 3\nstandard deviations "
                    "(sd), or a modified z score of 3.5\n(mad); iqr by default")
        ->type_name("WORD")
        ->group(kGroup)
        ->check(CLI::IsMember(kMethods));
    command
        .add_option("--outlier-handling", options.outlierHandling,
                    "What the statistics do with outliers: mark, trim or\nwinsorize; mark by "
                    "default")
        ->type_name("WORD")
        ->group(kGroup)
        ->check(CLI::IsMember(kHandlings));
    command
        .add_flag("--missing-patterns", options.missingPatterns,
                  "Count which variables are missing together; csv then\nhas only these")
        ->group(kGroup);
    command
        .add_flag("--pairs", options.pairs,
                  "Compare all pairs of variables: correlations, eta,\nCramer's V and their tests; "
                  "csv then has only these")
        ->group(kGroup);
    command.add_option("--target", options.target, "Compare this variable with all others")
        ->type_name("VARIABLE")
        ->group(kGroup)
        ->check(notEmpty());
}

void applyAnalyses(const AnalysisOptions& options, const std::string& target,
                   HVDescriptive& descriptive)
{
    if (!options.percentiles.empty())
        descriptive.SetDESetting("computeCustomPercentiles", base::joined(options.percents(), ","));
    if (options.wantsOutliers())
        descriptive.SetDESetting("identifyExtremeOutliers", true);
    if (!options.outlierMethod.empty())
        descriptive.SetDESetting("outlierDetectionMethod", kMethods.at(options.outlierMethod));
    if (!options.outlierHandling.empty())
        descriptive.SetDESetting("outlierHandlingMethod", kHandlings.at(options.outlierHandling));
    if (options.missingPatterns)
        descriptive.SetDESetting("computeMissingPatterns", true);
    if (options.pairs)
        descriptive.SetDESetting("computeBivStatsForBDP", true);
    if (!target.empty()) {
        descriptive.SetDESetting("computeAllTargetInputPairs", true);
        descriptive.SetDESetting("targetField", target);
    }
}
