#include "hvhost/combine/Append.h"

#include <memory>

#include <CLI/CLI.hpp>

#include "hvhost/base/CommandFault.h"
#include "hvhost/base/HelpText.h"
#include "hvhost/input/OptionChecks.h"
#include "hvhost/input/OptionGroups.h"

namespace {

/// The last argument is the output, unless -o names it.
void takeOutput(AppendOptions& options)
{
    if (options.output.path.empty()) {
        options.output.path = options.files.back();
        options.files.pop_back();
    }
    if (options.files.size() < 2)
        throw CommandFault(ExitStatus::Usage, "append needs two files and OUT, the file to write",
                           "hvhost help append shows how it is used");
}

} // namespace

void addAppendCommand(CLI::App& app, CommonOptions& common)
{
    const auto options = std::make_shared<AppendOptions>();
    CLI::App* const command =
        newCommand(app, "append", "Append the records of several files.",
                   "  hvhost append penguins.csv colonies.csv both.sav\n"
                   "  hvhost append shops.csv shops.csv - --distinct --limit 3\n");
    command
        ->add_option("FILE", options->files,
                     "The data files, in their order, and then the file to\nwrite; - for standard "
                     "input and output")
        ->type_name("FILE")
        ->required()
        ->check(notEmpty());
    addOutputPath(*command, options->output, "-o", false);
    command
        ->add_flag("--by-position", options->byPosition,
                   "Fields match by their position. By default they match\nby their names, in any "
                   "letter case")
        ->group("Input");
    addCombineOptions(*command, *options);
    addEngineOptions(*command, common);
    addCommonOptions(*command, common);
    command->callback([options, &common] {
        takeOutput(*options);
        append(*options, common);
    });
}
