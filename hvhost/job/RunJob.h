#pragma once

#include <string>
#include <vector>

#include "hvhost/base/CommonOptions.h"

namespace CLI {
class App;
}

/// The options of run: a job, the datasets that it reads and the files that it writes, with the
/// names that the job uses.
struct RunOptions
{
    std::string job;               ///< a file, or "-"
    std::vector<std::string> data; ///< NAME=FILE
    std::vector<std::string> save; ///< NAME=FILE
    std::string userMissing;       ///< exclude or keep; empty: exclude, with a warning
    bool force = false;
    bool printJob = false;
};
/// Runs a job text.
void runJob(const RunOptions& options, const CommonOptions& common);

/// Adds the command to the application. `common` must outlive it.
void addRunCommand(CLI::App& app, CommonOptions& common);
