#pragma once

#include <string>
#include <vector>

#include "hvhost/base/CommonOptions.h"
#include "hvhost/base/TextRequest.h"

namespace CLI {
class App;
class Option;
} // namespace CLI

/// Functions that add options which several commands have. The options are stored in the given
/// objects, which must outlive the application.

void addCommonOptions(CLI::App& app, CommonOptions& options);
/// For commands whose jobs can run on a cluster.
void addEngineOptions(CLI::App& app, CommonOptions& options);

/// Adds the input, the output and the options that change the records in between.
void addJobOptions(CLI::App& app, JobOptions& options, bool needsOutput);

/// Adds the input and the options that change the records, for a command that shows its result.
void addRecordsOptions(CLI::App& app, InputOptions& input, RecordOptions& records);

/// The options for the form of an input.
void addForm(CLI::App& app, InputOptions& options);
/// An output by its names on the command line.
void addOutputPath(CLI::App& app, OutputOptions& options, const char* names, bool needed);
/// The options for the form of an output.
void addOutputForm(CLI::App& app, OutputOptions& options);
/// The options that change the records.
void addRecords(CLI::App& app, RecordOptions& options);
/// The options that select and order records, and --keep.
void addSelection(CLI::App& app, RecordOptions& options);

/// Adds an input that the host opens as a dataset.
void addDatasetOptions(CLI::App& app, InputOptions& options);
/// The same for a command whose jobs read the cases, with a weight and a treatment of user-missing
/// values.
void addCasesOptions(CLI::App& app, InputOptions& options);
/// The same for a command in which --from has another meaning. Here --data-kind is the kind.
void addMapData(CLI::App& app, InputOptions& options);
/// The same for a command on a model. The data are optional unless `isNeeded`.
void addModelData(CLI::App& app, InputOptions& options, bool isNeeded);
/// --user-missing
CLI::Option* addUserMissing(CLI::App& app, std::string& what);
/// --weight
void addWeight(CLI::App& app, InputOptions& options);
/// --width and --group-digits, for output as text. Returns both.
std::vector<CLI::Option*> addTextOptions(CLI::App& app, TextRequest& text);
/// --print-job
void addPrintJob(CLI::App& app, bool& printJob);
