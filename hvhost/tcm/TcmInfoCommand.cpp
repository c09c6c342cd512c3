#include "hvhost/tcm/TcmInfo.h"

#include <memory>

#include <CLI/CLI.hpp>

#include "hvhost/base/HelpText.h"
#include "hvhost/input/OptionGroups.h"

void addTcmInfoCommand(CLI::App& tcm, CommonOptions& common)
{
    const auto options = std::make_shared<TcmInfoOptions>();
    CLI::App* const app = newCommand(tcm, "info", "Show the series, equations and fit of a model.",
                                     "  hvhost tcm info shops.tcm\n"
                                     "  hvhost tcm info shops.tcm --format json\n"
                                     "  hvhost tcm info shops.tcm -o shops.html\n");
    addModel(*app, options->model);
    addShown(*app, options->shown);
    addCommonOptions(*app, common);
    app->callback([options, &common] { tcmInfo(*options, common); });
}
