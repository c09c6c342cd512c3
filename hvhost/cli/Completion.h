#pragma once

#include <string>

namespace CLI {
class App;
}

/// A completion script for commands and options. `shell` is bash, zsh or fish.
std::string completionScript(const CLI::App& app, const std::string& shell);

/// The command whose name is most similar to a mistyped one; empty if none is similar.
std::string nearestCommand(const CLI::App& app, const std::string& word);
