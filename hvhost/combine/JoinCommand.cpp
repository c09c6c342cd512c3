#include "hvhost/combine/Join.h"

#include <memory>

#include <CLI/CLI.hpp>

#include "hvhost/base/HelpText.h"
#include "hvhost/input/OptionChecks.h"
#include "hvhost/input/OptionGroups.h"

void addJoinCommand(CLI::App& app, CommonOptions& common)
{
    const auto options = std::make_shared<JoinOptions>();
    CLI::App* const command = newCommand(
        app, "join", "Join the records of two files that have the same keys.",
        "  hvhost join penguins.csv colonies.csv - --on island --keep species,east --limit 3\n"
        "  hvhost join penguins.csv colonies.csv located.sav --on island --how left\n"
        "  hvhost join penguins.csv colonies.csv o.csv --on island --report keys.txt\n");
    options->files.resize(2);
    const auto add = [command](const char* name, std::string& path, const char* purpose) {
        command->add_option(name, path, purpose)->type_name("FILE")->required()->check(notEmpty());
    };
    add("LEFT", options->files[0], "The first data file; - for standard input");
    add("RIGHT", options->files[1], "The second data file");
    addOutputPath(*command, options->output, "OUT,-o", true);
    command
        ->add_option("--on", options->on,
                     "Fields that must be equal, separated by commas;\nLEFT=RIGHT if their names "
                     "differ")
        ->type_name("KEY")
        ->required()
        ->check(notEmpty())
        ->delimiter(',')
        ->allow_extra_args(false)
        ->group("Join");
    command
        ->add_option("--how", options->how,
                     "Records that are kept: with a partner (inner, the\ndefault), also those "
                     "without one of the left, the\nright or both files (full), or only those of "
                     "the\nleft file without one (anti)")
        ->type_name("HOW")
        ->check(CLI::IsMember({"inner", "left", "right", "full", "anti"}))
        ->group("Join");
    command
        ->add_option("--report", options->report,
                     "Write the keys without a partner to this file, as\ntext, csv or json by its "
                     "name")
        ->type_name("FILE")
        ->check(notEmpty())
        ->group("Join");
    addCombineOptions(*command, *options);
    addEngineOptions(*command, common);
    addCommonOptions(*command, common);
    command->callback([options, &common] { join(*options, common); });
}
