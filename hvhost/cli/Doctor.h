#pragma once

#include <string>

namespace CLI {
class App;
}

/// Shows which parts were found and where, and which are missing. Throws CommandFault if a part is
/// missing without which no job runs.
void doctor(const std::string& format);

/// Adds the command to the application.
void addDoctorCommand(CLI::App& app);
