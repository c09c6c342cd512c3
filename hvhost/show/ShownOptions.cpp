#include "hvhost/show/ShownOptions.h"

#include <CLI/CLI.hpp>

#include "hvhost/input/OptionChecks.h"
#include "hvhost/input/OptionGroups.h"

void addShownOptions(CLI::App& app, ShownOptions& options, const ShownHelp& help)
{
    std::vector<CLI::Option*> added = {app.add_option("--format", options.format, help.format)
                                           ->type_name("FORM")
                                           ->check(CLI::IsMember(help.forms))};
    for (CLI::Option* const option : addTextOptions(app, options.text))
        added.push_back(option);
    added.push_back(
        app.add_option("-o", options.output, help.output)->type_name("FILE")->check(notEmpty()));
    added.push_back(app.add_flag("--force", options.force, "Replace an existing file"));
    if (*help.group != '\0')
        for (CLI::Option* const option : added)
            option->group(help.group);
}
