#include "hvhost/tcm/TcmImpact.h"

#include <memory>

#include <CLI/CLI.hpp>

#include "hvhost/base/HelpText.h"
#include "hvhost/input/OptionChecks.h"
#include "hvhost/input/OptionGroups.h"

void addTcmImpactCommand(CLI::App& tcm, CommonOptions& common)
{
    const auto options = std::make_shared<TcmImpactOptions>();
    CLI::App* const app =
        newCommand(tcm, "impact", "Show what drives a series, and what the series drives.",
                   "  hvhost tcm impact shops.tcm --series north,sales --level 2\n"
                   "  hvhost tcm impact shops.tcm shops.csv --series north,sales -o impact.html\n");
    addModel(*app, options->model);
    addModelData(*app, options->input, false);
    addSeries(*app, options->series, "The series")->required();
    app->add_option("--level", options->level,
                    "The number of steps through the network; 1 by default")
        ->type_name("N")
        ->check(wholeNumberFrom(1))
        ->group("Series");
    addShown(*app, options->shown);
    addCommonOptions(*app, common);
    app->callback([options, &common] { tcmImpact(*options, common); });
}
