#include "hvhost/score/Score.h"

#include <memory>

#include <CLI/CLI.hpp>

#include "hvhost/base/HelpText.h"
#include "hvhost/input/OptionChecks.h"
#include "hvhost/input/OptionGroups.h"

void addScoreCommand(CLI::App& app, CommonOptions& common)
{
    const auto options = std::make_shared<ScoreOptions>();
    CLI::App* const command = newCommand(
        app, "score", "Score each record with a transform model.",
        "  hvhost score penguins.pmml penguins.csv\n"
        "  hvhost score penguins.pmml penguins.csv --keep species --target beak_ratio\n"
        "  hvhost score penguins.pmml penguins.csv --where 'x.sex == \"MALE\"' -o males.csv\n");
    command
        ->add_option("MODEL", options->model,
                     "A PMML file with derived fields; - for standard input")
        ->type_name("FILE")
        ->required()
        ->check(notEmpty());
    addRecordsOptions(*command, options->input, options->records);
    const auto add = [command](const char* name, auto& value, const char* shown,
                               const char* purpose) {
        return command->add_option(name, value, purpose)->type_name(shown)->group("Output");
    };
    for (CLI::Option* const list :
         {add("--keep", options->keep, "FIELD",
              "Fields of the data to keep with the results, separated\nby commas; all by default"),
          add("--target", options->targets, "NAME",
              "Results of the model to write, separated by commas;\nall by default")})
        list->delimiter(',')->allow_extra_args(false);
    addShownOptions(*command, options->shown,
                    {{"text", "csv", "json"},
                     "The form; by default json or text if the name of the\nfile ends in .json or "
                     ".txt, else csv",
                     "Write the scored records to this file",
                     "Output"});
    addPrintJob(*command, options->printJob);
    addCommonOptions(*command, common);
    command->callback([options, &common] { score(*options, common); });
}
