#include "hvhost/describe/Describe.h"

#include <memory>

#include <CLI/CLI.hpp>

#include "hvhost/base/HelpText.h"
#include "hvhost/input/OptionChecks.h"
#include "hvhost/input/OptionGroups.h"

void addDescribeCommand(CLI::App& app, CommonOptions& common)
{
    const auto options = std::make_shared<DescribeOptions>();
    CLI::App* const command =
        newCommand(app, "describe", "Describe the variables of a dataset.",
                   "  hvhost describe weather.csv\n"
                   "  hvhost describe weather.csv wind weather --date date --format json\n"
                   "  hvhost describe penguins.csv --by species -o penguins.html\n"
                   "  hvhost describe penguins.csv --percentiles 5,95 --outliers --pairs\n");
    addCasesOptions(*command, options->input);
    command
        ->add_option("VARIABLE", options->variables,
                     "Variables to describe; by default all except the\nweight and the split")
        ->type_name("NAME");
    const auto add = [command](const char* name, auto& value, const char* shown,
                               const char* purpose) {
        return command->add_option(name, value, purpose)->type_name(shown)->group("Description");
    };
    for (CLI::Option* const list :
         {add("--by", options->by, "VARIABLE",
              "Describe each group of cases with equal values of\nthese, separated by commas"),
          add("--date", options->dates, "VARIABLE",
              "Find the time interval of a date, or of numbers that\nform one, for example "
              "year,month")})
        list->delimiter(',')->allow_extra_args(false);
    add("--distinct", options->mostDistinct, "N",
        "List the distinct values of a category if there are at\nmost N; 100 by default, -1 for "
        "any number")
        ->check(wholeNumberFrom(-1));
    addAnalysisOptions(*command, options->analyses);
    addShownOptions(
        *command, options->shown,
        {{"text", "html", "csv", "json"},
         "The form; csv has only the statistics. By default the\nextension of the file, "
         "else text",
         "Write the description to this file",
         "Description"});
    addPrintJob(*command, options->printJob);
    addCommonOptions(*command, common);
    command->callback([options, &common] { describe(*options, common); });
}
