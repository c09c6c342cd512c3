#pragma once

#include <string>

#include "hvhost/base/CommandFault.h"

namespace CLI {
class App;
class ParseError;
} // namespace CLI

/// The command or subcommand that the line names, with its words.
struct NamedCommand
{
    const CLI::App* app;
    std::string words; ///< empty if it names none
};
NamedCommand namedCommand(const CLI::App& app);

/// The command with this name; null if it does not exist.
const CLI::App* findCommand(const CLI::App& app, const std::string& name);

/// The error for an unknown command. `hint` is used if no command is similar.
CommandFault unknownCommand(const CLI::App& app, const std::string& word, const std::string& hint);

/// The error of the parser, in the words of the help.
CommandFault usageFault(const CLI::App& app, const CLI::ParseError& error);
