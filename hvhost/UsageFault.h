#pragma once

#include <string>

#include "CommandFault.h"

namespace CLI {
class App;
class ParseError;
} // namespace CLI

/// Null if there is no such command.
const CLI::App* findCommand(const CLI::App& app, const std::string& name);

/// The fault of a word in the place of a command.
CommandFault unknownCommand(const CLI::App& app, const std::string& word);

/// What the parser has against a command line, in the words of the help. `word` is the first one
/// of the line, null if there is none.
CommandFault usageFault(const CLI::App& app, const CLI::ParseError& error, const char* word);
