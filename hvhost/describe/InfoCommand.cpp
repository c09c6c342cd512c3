#include "hvhost/describe/Info.h"

#include <memory>

#include <CLI/CLI.hpp>

#include "hvhost/base/HelpText.h"
#include "hvhost/input/OptionChecks.h"
#include "hvhost/input/OptionGroups.h"

void addInfoCommand(CLI::App& app, CommonOptions& common)
{
    const auto options = std::make_shared<InfoOptions>();
    CLI::App* const command = newCommand(app, "info", "Show the metadata of a dataset.",
                                         "  hvhost info weather.csv\n"
                                         "  hvhost info weather.csv --format json\n");
    addDatasetOptions(*command, options->input);
    command->add_option("--format", options->format, "How it is shown")
        ->type_name("FORM")
        ->check(CLI::IsMember({"text", "csv", "json"}));
    addTextOptions(*command, options->text);
    command->add_flag("--data-model", options->showDataModel,
                      "Show the data model document instead");
    addCommonOptions(*command, common);
    command->callback([options, &common] { info(*options, common); });
}
