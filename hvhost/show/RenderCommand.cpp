#include "hvhost/show/Render.h"

#include <memory>

#include <CLI/CLI.hpp>

#include "hvhost/base/HelpText.h"
#include "hvhost/input/OptionChecks.h"
#include "hvhost/input/OptionGroups.h"

void addRenderCommand(CLI::App& app, CommonOptions& common)
{
    const auto options = std::make_shared<RenderOptions>();
    CLI::App* const command =
        newCommand(app, "render", "Show the tables, charts and messages of a result document.",
                   "  hvhost render weather.json\n"
                   "  hvhost render weather.json --order weather-order.json -o weather.html\n");
    command->add_option("RESULT", options->document, "The result document; - for standard input")
        ->type_name("FILE")
        ->required()
        ->check(notEmpty());
    command
        ->add_option("--order", options->order,
                     "A JSON file that selects what is shown, and how; by\ndefault every table and "
                     "chart is shown")
        ->type_name("FILE")
        ->check(notEmpty())
        ->group("Output");
    addShownOptions(*command, options->shown,
                    {{"text", "html"},
                     "The form; by default html if the name of the file\nends in .html, else text",
                     "Write the output to this file",
                     "Output"});
    command->add_flag("--debug", options->debug, "Also show how long each part took")
        ->group("Output");
    addCommonOptions(*command, common);
    command->callback([options, &common] { render(*options, common); });
}
