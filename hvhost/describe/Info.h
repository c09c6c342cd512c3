#pragma once

#include <string>

#include "hvhost/base/CommonOptions.h"
#include "hvhost/base/TextRequest.h"

namespace CLI {
class App;
}

/// The options of info.
struct InfoOptions
{
    InputOptions input;
    std::string format = "text"; ///< text, csv or json
    TextRequest text;
    bool showDataModel = false;
};
/// Shows the metadata of a dataset.
void info(const InfoOptions& options, const CommonOptions& common);

/// Adds the command to the application. `common` must outlive it.
void addInfoCommand(CLI::App& app, CommonOptions& common);
