#pragma once

#include <string>
#include <vector>

#include "hvhost/base/CommonOptions.h"
#include "hvhost/describe/AnalysisOptions.h"
#include "hvhost/show/ShownOptions.h"

namespace CLI {
class App;
}

/// The options of describe. Without variables, all variables except the weight and the split are
/// described.
struct DescribeOptions
{
    InputOptions input;
    std::vector<std::string> variables;
    std::vector<std::string> by;    ///< empty: the split of the file
    std::vector<std::string> dates; ///< date variables, or numbers that form a date
    int mostDistinct = 100; ///< distinct values of a variable that are listed; -1: any number
    AnalysisOptions analyses;
    ShownOptions shown;
    bool printJob = false;
};
/// Shows descriptive statistics, distinct values and time intervals.
void describe(const DescribeOptions& options, const CommonOptions& common);

/// Adds the command to the application. `common` must outlive it.
void addDescribeCommand(CLI::App& app, CommonOptions& common);
