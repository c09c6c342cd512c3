#pragma once

#include <string>
#include <vector>

#include "hvhost/base/CommonOptions.h"
#include "hvhost/describe/AnalysisOptions.h"

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
    std::string format;  ///< text, html, csv or json; empty: from the name of the output
    long long width = 0; ///< of text; 0: the width of the terminal
    std::string output;  ///< empty for standard output
    bool force = false;
    bool printJob = false;
};
/// Shows descriptive statistics, distinct values and time intervals.
void describe(const DescribeOptions& options, const CommonOptions& common);

/// Adds the command to the application. `common` must outlive it.
void addDescribeCommand(CLI::App& app, CommonOptions& common);
