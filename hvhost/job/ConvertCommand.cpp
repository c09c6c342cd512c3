#include "hvhost/job/Convert.h"

#include <memory>

#include <CLI/CLI.hpp>

#include "hvhost/base/HelpText.h"
#include "hvhost/input/OptionChecks.h"
#include "hvhost/input/OptionGroups.h"

void addConvertCommand(CLI::App& app, CommonOptions& common)
{
    const auto options = std::make_shared<ConvertOptions>();
    CLI::App* const command = newCommand(
        app, "convert", "Write a dataset in another form.",
        "  hvhost convert weather.csv weather.sav\n"
        "  hvhost convert weather.csv warm.csv --where 'x.temp_max > 20' --keep date,temp_max\n"
        "  hvhost convert weather.csv - --derive 'spread=x.temp_max - x.temp_min' --limit 5\n");
    addJobOptions(*command, *options, true);
    command
        ->add_option("--keep", options->keep, "Fields to keep, in this order, separated by commas")
        ->type_name("FIELD")
        ->check(notEmpty())
        ->delimiter(',')
        ->allow_extra_args(false)
        ->group("Records");
    addWeight(*command, options->input);
    addCommonOptions(*command, common);
    command->callback([options, &common] { convert(*options, common); });
}
