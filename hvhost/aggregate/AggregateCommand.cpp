#include "hvhost/aggregate/Aggregate.h"

#include <memory>

#include <CLI/CLI.hpp>

#include "hvhost/base/HelpText.h"
#include "hvhost/input/OptionChecks.h"
#include "hvhost/input/OptionGroups.h"

void addAggregateCommand(CLI::App& app, CommonOptions& common)
{
    const auto options = std::make_shared<AggregateOptions>();
    CLI::App* const command = newCommand(
        app, "aggregate", "Aggregate the records of each group.",
        "  hvhost aggregate weather.csv --by weather --stat mean:temp_max --stat count\n"
        "  hvhost aggregate penguins.csv out.csv --by species,sex --stat p90:body_mass_g\n"
        "  hvhost aggregate penguins.csv --by species,sex --stat count --totals\n");
    addJobOptions(*command, *options, false);
    const auto add = [command](const char* name, std::vector<std::string>& values,
                               const char* shown, const char* purpose) {
        return command->add_option(name, values, purpose)
            ->type_name(shown)
            ->delimiter(',')
            ->allow_extra_args(false)
            ->group("Aggregates");
    };
    CLI::Option* const by =
        add("--by", options->by, "FIELD", "Fields that form the groups, separated by commas");
    command
        ->add_flag(
            "--totals", options->totals,
            "Also a row for the groups of all but the last field,\nand so on up to one for all "
            "records. The column total\nhas the number of fields that a row sums up")
        ->needs(by)
        ->group("Aggregates");
    add("--stat", options->statistics, "FUNCTION:FIELD[:NAME]",
        "sum, mean, min, max, sd, variance, median, pNN,\nfirst, last, count; or count alone")
        ->required();
    addWeight(*command, options->input);
    command
        ->add_flag("--unweighted", options->unweighted,
                   "Count each record once, even if the file has a weight")
        ->excludes("--weight")
        ->group("Input");
    command
        ->add_option("--format", options->format, "The form of a result that is shown, without OUT")
        ->type_name("FORM")
        ->check(CLI::IsMember({"text", "csv", "json"}));
    addTextOptions(*command, options->text);
    addEngineOptions(*command, common);
    addCommonOptions(*command, common);
    command->callback([options, &common] { aggregate(*options, common); });
}
