#include "hvhost/tcm/TcmOutliers.h"

#include <memory>

#include <CLI/CLI.hpp>

#include "hvhost/base/HelpText.h"
#include "hvhost/input/OptionGroups.h"

void addTcmOutliersCommand(CLI::App& tcm, CommonOptions& common)
{
    const auto options = std::make_shared<TcmOutliersOptions>();
    CLI::App* const app = newCommand(
        tcm, "outliers", "Find values that a model did not expect.",
        "  hvhost tcm outliers shops.tcm shops.csv\n"
        "  hvhost tcm outliers shops.tcm shops.csv --series north,sales --format json\n");
    addModel(*app, options->model);
    addModelData(*app, options->input, true);
    addSeries(*app, options->series, "One series alone, with the causes of its outliers");
    addShown(*app, options->shown);
    addCommonOptions(*app, common);
    app->callback([options, &common] { tcmOutliers(*options, common); });
}
