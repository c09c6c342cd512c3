#pragma once

#include <string>

/// The path of a file to write; a link stays, and what it points to is written. Throws CommandFault
/// for a place where the file cannot be, or may not: Usage for a file that is there already, unless
/// it may be replaced, and JobFailed for a folder that is not there.
std::string outputPath(const std::string& name, bool mayReplace);
