#pragma once

#include <string>

#include "hvhost/base/CommonOptions.h"
#include "hvhost/tcm/TcmOptions.h"

/// The options of tcm impact. The data are optional.
struct TcmImpactOptions
{
    std::string model;
    InputOptions input; ///< an empty path for none
    std::string series;
    int level = 1;
    ShownOptions shown;
};
/// Shows what a series influences, and what influences it. Throws CommandFault.
void tcmImpact(const TcmImpactOptions& options, const CommonOptions& common);

/// Adds the command to the commands of "hvhost tcm". `common` must outlive them.
void addTcmImpactCommand(CLI::App& tcm, CommonOptions& common);
