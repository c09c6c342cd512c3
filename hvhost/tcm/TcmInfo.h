#pragma once

#include <string>

#include "hvhost/base/CommonOptions.h"
#include "hvhost/tcm/TcmOptions.h"

/// The options of tcm info.
struct TcmInfoOptions
{
    std::string model;
    ShownOptions shown;
};
/// Shows the series of a model, its equations and how well they fit. Throws CommandFault.
void tcmInfo(const TcmInfoOptions& options, const CommonOptions& common);

/// Adds the command to the commands of "hvhost tcm". `common` must outlive them.
void addTcmInfoCommand(CLI::App& tcm, CommonOptions& common);
