#pragma once

#include "CommonOptions.h"

namespace CLI {
class App;
}

/// Adds options that several commands take; they are written to the options given, which must live
/// as long as the application.

void addCommonOptions(CLI::App& app, CommonOptions& options);

/// The input, the output and what happens to the records in between.
void addJobOptions(CLI::App& app, JobOptions& options, bool needsOutput);

/// --print-job
void addPrintJob(CLI::App& app, bool& printJob);
