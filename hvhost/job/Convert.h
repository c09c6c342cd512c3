#pragma once

#include "hvhost/base/CommonOptions.h"

namespace CLI {
class App;
}

/// Converts a dataset to another form.
void convert(const JobOptions& options, const CommonOptions& common);

/// Adds the command to the application. `common` must outlive it.
void addConvertCommand(CLI::App& app, CommonOptions& common);
