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
    const auto add = [command](const char* name, auto& value, const char* shown,
                               const char* purpose) {
        return command->add_option(name, value, purpose)->type_name(shown)->group("Output");
    };
    add("--order", options->order, "FILE",
        "A JSON file that selects what is shown, and how; by\ndefault every table and chart is "
        "shown")
        ->check(notEmpty());
    add("--format", options->format, "FORM",
        "The form; by default html if the name of the file\nends in .html, else text")
        ->check(CLI::IsMember({"text", "html"}));
    addWidth(*command, options->width)->group("Output");
    add("-o", options->output, "FILE", "Write the output to this file")->check(notEmpty());
    command->add_flag("--force", options->force, "Replace an existing file")->group("Output");
    command->add_flag("--debug", options->debug, "Also show how long each part took")
        ->group("Output");
    addCommonOptions(*command, common);
    command->callback([options, &common] { render(*options, common); });
}
