#pragma once

#include <string>

struct CommonOptions;

namespace CLI {
class App;
}

/// Shows which parts were found and where, and which are missing. Throws CommandFault if a part is
/// missing without which no job runs, or if the cluster of --engine cannot be used.
void doctor(const std::string& format, const CommonOptions& common);

/// Adds the command to the application.
void addDoctorCommand(CLI::App& app, CommonOptions& common);
