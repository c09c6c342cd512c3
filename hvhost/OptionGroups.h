#pragma once

#include <string>

#include "CommonOptions.h"

namespace CLI {
class App;
class Option;
} // namespace CLI

/// Adds options that several commands take; they are written to the options given, which must live
/// as long as the application.

void addCommonOptions(CLI::App& app, CommonOptions& options);

/// The input, the output and what happens to the records in between.
void addJobOptions(CLI::App& app, JobOptions& options, bool needsOutput);

/// The input and what happens to the records, for a command that shows what it makes of them.
void addRecordsOptions(CLI::App& app, InputOptions& input, RecordOptions& records);

/// An input that the host opens as a dataset.
void addDatasetOptions(CLI::App& app, InputOptions& options);
/// The same for a command whose jobs read the cases: weighted, and with or without user-missing
/// values.
void addCasesOptions(CLI::App& app, InputOptions& options);
/// The same for a command whose --from is something else: --data-kind tells the kind.
void addMapData(CLI::App& app, InputOptions& options);
/// The same for a command on a model, which may do without data.
void addModelData(CLI::App& app, InputOptions& options, bool isNeeded);
/// --user-missing
CLI::Option* addUserMissing(CLI::App& app, std::string& what);
/// --weight
void addWeight(CLI::App& app, InputOptions& options);
/// --width, of what is shown as text; 0 if it is not given.
CLI::Option* addWidth(CLI::App& app, long long& width);
/// --print-job
void addPrintJob(CLI::App& app, bool& printJob);
