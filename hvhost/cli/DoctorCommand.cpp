#include <memory>

#include <CLI/CLI.hpp>

#include "hvhost/base/HelpText.h"
#include "hvhost/cli/Doctor.h"
#include "hvhost/input/OptionGroups.h"

void addDoctorCommand(CLI::App& app, CommonOptions& common)
{
    const auto format = std::make_shared<std::string>("text");
    CLI::App* const command =
        newCommand(app, "doctor", "Show which parts are installed, and which are missing.",
                   "  hvhost doctor\n");
    addEngineOptions(*command, common);
    command->add_option("--format", *format, "The form of the output")
        ->type_name("FORM")
        ->check(CLI::IsMember({"text", "json"}));
    command->callback([format, &common] { doctor(*format, common); });
}
