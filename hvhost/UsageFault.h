#pragma once

#include <string>

#include "CommandFault.h"

namespace CLI {
class App;
class ParseError;
} // namespace CLI

/// Null if there is no such command.
const CLI::App* findCommand(const CLI::App& app, const std::string& name);

/// The fault of a word in the place of a command. `hint` is for a word that is like none.
CommandFault unknownCommand(const CLI::App& app, const std::string& word, const std::string& hint);

/// What the parser has against a command line, in the words of the help.
CommandFault usageFault(const CLI::App& app, const CLI::ParseError& error);
