#pragma once

#include <string>

#include "hvhost/base/CommonOptions.h"
#include "hvhost/tcm/TcmOptions.h"

/// The options of tcm outliers.
struct TcmOutliersOptions
{
    std::string model;
    InputOptions input;
    std::string series; ///< empty for all
    ShownOptions shown;
};
/// Shows the outliers in the data. Throws CommandFault.
void tcmOutliers(const TcmOutliersOptions& options, const CommonOptions& common);

/// Adds the command to the commands of "hvhost tcm". `common` must outlive them.
void addTcmOutliersCommand(CLI::App& tcm, CommonOptions& common);
