#pragma once

#include <string>
#include <vector>

#include "hvhost/base/CommonOptions.h"
#include "hvhost/show/ShownOptions.h"

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
    ShownOptions shown; ///< csv by default
    bool printJob = false;
};
/// Scores a dataset row by row with a transform model.
void score(const ScoreOptions& options, const CommonOptions& common);

/// Adds the command to the application. `common` must outlive it.
void addScoreCommand(CLI::App& app, CommonOptions& common);
