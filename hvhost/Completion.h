#pragma once

#include <string>

namespace CLI {
class App;
}

/// A script that completes commands and options; `shell` is bash, zsh or fish.
std::string completionScript(const CLI::App& app, const std::string& shell);

/// The command whose name is nearest to a mistyped one; empty if none is near.
std::string nearestCommand(const CLI::App& app, const std::string& word);
