#pragma once

#include "hvhost/tcm/TcmOptions.h"

namespace CLI {
class App;
}

/// The commands of "hvhost tcm" and their options.
class TcmCommandLine
{
public:
    /// Adds the commands to the application. This object and `common` must outlive it.
    void addTo(CLI::App& app, CommonOptions& common);

private:
    void addTrain(CLI::App& tcm, CommonOptions& common);
    void addPreparation(CLI::App& app);
    void addEquations(CLI::App& app);
    void addInfo(CLI::App& tcm, CommonOptions& common);
    void addForecast(CLI::App& tcm, CommonOptions& common);
    void addImpact(CLI::App& tcm, CommonOptions& common);
    void addOutliers(CLI::App& tcm, CommonOptions& common);

    TcmTrainOptions _train;
    TcmInfoOptions _info;
    TcmForecastOptions _forecast;
    TcmImpactOptions _impact;
    TcmOutliersOptions _outliers;
};
