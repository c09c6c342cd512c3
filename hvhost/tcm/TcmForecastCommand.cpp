#include "hvhost/tcm/TcmForecast.h"

#include <memory>

#include <CLI/CLI.hpp>

#include "hvhost/base/HelpText.h"
#include "hvhost/input/OptionChecks.h"
#include "hvhost/input/OptionGroups.h"

void addTcmForecastCommand(CLI::App& tcm, CommonOptions& common)
{
    const auto options = std::make_shared<TcmForecastOptions>();
    CLI::App* const app = newCommand(
        tcm, "forecast", "Forecast a series.",
        "  hvhost tcm forecast shops.tcm shops.csv --series north,sales --horizon 12\n"
        "  hvhost tcm forecast shops.tcm shops.csv --series north,sales --horizon 12 \\\n"
        "      --set 'north,advertising[*]=+10%' -o north.html\n");
    addModel(*app, options->model);
    addModelData(*app, options->input, true);
    addSeries(*app, options->series, "The series")->required();
    app->add_option("--horizon", options->horizon,
                    "The number of points after the data; 0 for none")
        ->type_name("N")
        ->required()
        ->check(wholeNumberFrom(0))
        ->group("Series");
    app->add_option(
           "--set", options->scenario,
           "Set a value: [TIME] at a point, [+N] at the Nth point,\n[*] at all points; =+10% "
           "is a change. Repeatable")
        ->type_name("SERIES[TIME]=VALUE")
        ->allow_extra_args(false)
        ->check(notEmpty())
        ->group("Series");
    app->add_option("--confidence", options->confidence,
                    "The confidence of the bounds in percent; 95 by default")
        ->type_name("PERCENT")
        ->check(CLI::Range(1.0, 99.99))
        ->group("Series");
    addShown(*app, options->shown);
    addCommonOptions(*app, common);
    app->callback([options, &common] { tcmForecast(*options, common); });
}
