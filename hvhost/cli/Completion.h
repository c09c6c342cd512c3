#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

/// A completion script for commands and options. `shell` is bash, zsh or fish.
std::string completionScript(const CLI::App& app, const std::string& shell);

/// The names of all subcommands of a command.
std::vector<std::string> commandNames(const CLI::App& app);
