#pragma once

#include <memory>
#include <string>

#include <CLI/CLI.hpp>

/// The exit statuses, for every help.
inline constexpr const char* kExitStatuses =
    "Exit status: 0 done; 1 the job failed; 2 usage; 3 an input cannot be read or is\n"
    "invalid; 4 the engine or the Java virtual machine cannot start; 5 done with\n"
    "warnings under --strict; 124 --timeout; 130 interrupted; 141 nobody reads the\n"
    "output any more.";
inline constexpr const char* kCommandsHint = "hvhost --help lists the commands";
inline constexpr const char* kCommandGroup = "Commands";

/// Formats the help of the application and of its commands.
std::shared_ptr<CLI::Formatter> helpFormatter();

/// Adds a command with its purpose and its examples, which run in the folder examples/data.
CLI::App* newCommand(CLI::App& app, const char* name, const char* purpose,
                     const std::string& examples);
/// Adds a command that consists of commands, one of which is required.
CLI::App* newCommandGroup(CLI::App& app, const std::string& name, const char* purpose);
