#pragma once

#include <string>
#include <vector>

#include "hvhost/base/CommonOptions.h"

namespace CLI {
class App;
}

/// Options of the commands that make one file of several.
struct CombineOptions
{
    std::vector<std::string> files; ///< the inputs; "-" for standard input
    InputOptions form;              ///< how they are read; each option is for all of its kind
    OutputOptions output;
    RecordOptions records; ///< what is done with the combined records
    bool printJob = false;
};

/// Adds all options except the arguments.
void addCombineOptions(CLI::App& app, CombineOptions& options);
