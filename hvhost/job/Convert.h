#pragma once

#include <string>
#include <vector>

#include "hvhost/base/CommonOptions.h"

namespace CLI {
class App;
}

/// The options of convert. Without names to keep, all variables are copied.
struct ConvertOptions : JobOptions
{
    std::vector<std::string> keep;
};
/// Converts a dataset to another form.
void convert(const ConvertOptions& options, const CommonOptions& common);

/// Adds the command to the application. `common` must outlive it.
void addConvertCommand(CLI::App& app, CommonOptions& common);
