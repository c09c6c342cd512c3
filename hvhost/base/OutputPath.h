#pragma once

#include <string>

/// The path of a file to write. A link remains; its target is written. Throws CommandFault if the
/// file cannot be written there: Usage for a file that exists and may not be replaced, JobFailed
/// for a folder that does not exist.
std::string outputPath(const std::string& name, bool mayReplace);
