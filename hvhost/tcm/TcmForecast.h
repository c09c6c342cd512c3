#pragma once

#include <string>
#include <vector>

#include "hvhost/base/CommonOptions.h"
#include "hvhost/tcm/TcmOptions.h"

/// The options of tcm forecast.
struct TcmForecastOptions
{
    std::string model;
    InputOptions input;
    std::string series;
    int horizon = 0;
    double confidence = 95;            ///< percent
    std::vector<std::string> scenario; ///< SERIES[TIME]=VALUE, or =+N%
    ShownOptions shown;
};
/// Shows the predictions of a model for a series. Throws CommandFault.
void tcmForecast(const TcmForecastOptions& options, const CommonOptions& common);

/// Adds the command to the commands of "hvhost tcm". `common` must outlive them.
void addTcmForecastCommand(CLI::App& tcm, CommonOptions& common);
