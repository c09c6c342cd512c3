#include "hvhost/job/RunJob.h"

#include <memory>

#include <CLI/CLI.hpp>

#include "hvhost/base/HelpText.h"
#include "hvhost/input/OptionChecks.h"
#include "hvhost/input/OptionGroups.h"

void addRunCommand(CLI::App& app, CommonOptions& common)
{
    const auto options = std::make_shared<RunOptions>();
    CLI::App* const command =
        newCommand(app, "run", "Run a job text.",
                   "  hvhost run spread.hvl --data weather=weather.csv --save spread=-\n"
                   "  hvhost run spread.hvl --print-job\n");
    command->add_option("JOB", options->job, "A file with a job text; - for standard input")
        ->type_name("FILE")
        ->required();
    const auto add = [command](const char* name, std::vector<std::string>& values,
                               const char* purpose) {
        command->add_option(name, values, purpose)->type_name("NAME=FILE")->allow_extra_args(false);
    };
    add("--data", options->data, "The job reads this file as {\"dataSource\": NAME};\nrepeatable");
    add("--save", options->save, "Write the data source NAME of the job to this file;\nrepeatable");
    addUserMissing(*command, options->userMissing);
    command->add_flag("--force", options->force, "Replace existing files");
    addPrintJob(*command, options->printJob);
    addEngineOptions(*command, common);
    addCommonOptions(*command, common);
    command->callback([options, &common] { runJob(*options, common); });
}
