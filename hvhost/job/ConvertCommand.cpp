#include "hvhost/job/Convert.h"

#include <memory>

#include <CLI/CLI.hpp>

#include "hvhost/base/HelpText.h"
#include "hvhost/input/OptionChecks.h"
#include "hvhost/input/OptionGroups.h"

void addConvertCommand(CLI::App& app, CommonOptions& common)
{
    const auto options = std::make_shared<JobOptions>();
    CLI::App* const command = newCommand(
        app, "convert", "Write a dataset in another form.",
        "  hvhost convert weather.csv weather.sav\n"
        "  hvhost convert weather.csv warm.csv --where 'x.temp_max > 20' --keep date,temp_max\n"
        "  hvhost convert weather.csv - --derive 'spread=x.temp_max - x.temp_min' --limit 5\n"
        "  hvhost convert weather.csv - --top 3 --by wind --keep date,wind\n"
        "  hvhost convert penguins.csv - --distinct --keep species,island --sort species\n"
        "  hvhost convert penguins.csv some.csv --sample 10% --seed 7\n");
    addJobOptions(*command, *options, true);
    addSelection(*command, options->records);
    addWeight(*command, options->input);
    addEngineOptions(*command, common);
    addCommonOptions(*command, common);
    command->callback([options, &common] { convert(*options, common); });
}
