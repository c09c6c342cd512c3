#pragma once

#include <string>
#include <vector>

#include "hvhost/base/TextRequest.h"

namespace CLI {
class App;
}

/// How a result is shown and where it goes.
struct ShownOptions
{
    std::string format; ///< empty: by the extension of the output, see formOf
    std::string output; ///< empty for standard output
    TextRequest text;
    bool force = false;
};

/// What a command says about these options.
struct ShownHelp
{
    std::vector<std::string> forms;
    const char* format; ///< the purpose of --format
    const char* output; ///< the purpose of -o
    const char* group;  ///< the group of the help; empty for that of the command
};

/// Adds --format, --width, --group-digits, -o and --force. `options` must outlive the application.
void addShownOptions(CLI::App& app, ShownOptions& options, const ShownHelp& help);
