#pragma once

#include <string>
#include <vector>

#include "hvhost/base/CommonOptions.h"

namespace CLI {
class App;
}

/// The options of score. Without targets, all results of the model; without variables to keep, all
/// variables of the data.
struct ScoreOptions
{
    std::string model; ///< a PMML file
    InputOptions input;
    RecordOptions records;
    std::vector<std::string> keep;
    std::vector<std::string> targets;
    std::string format;  ///< csv, text or json; empty: from the name of the output, else csv
    long long width = 0; ///< of text; 0: the width of the terminal
    std::string output;  ///< empty for standard output
    bool force = false;
    bool printJob = false;
};
/// Scores a dataset row by row with a transform model.
void score(const ScoreOptions& options, const CommonOptions& common);

/// Adds the command to the application. `common` must outlive it.
void addScoreCommand(CLI::App& app, CommonOptions& common);
