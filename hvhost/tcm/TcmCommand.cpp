#include "hvhost/tcm/TcmCommand.h"

#include "hvhost/base/HelpText.h"
#include "hvhost/tcm/TcmForecast.h"
#include "hvhost/tcm/TcmImpact.h"
#include "hvhost/tcm/TcmInfo.h"
#include "hvhost/tcm/TcmOutliers.h"
#include "hvhost/tcm/TcmTrain.h"

void addTcmCommand(CLI::App& app, CommonOptions& common)
{
    CLI::App* const tcm = newCommandGroup(
        app, "tcm", "Train temporal causal models, forecast with them, explain them.");
    addTcmTrainCommand(*tcm, common);
    addTcmInfoCommand(*tcm, common);
    addTcmForecastCommand(*tcm, common);
    addTcmImpactCommand(*tcm, common);
    addTcmOutliersCommand(*tcm, common);
}
