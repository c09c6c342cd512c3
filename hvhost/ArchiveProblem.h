#pragma once

#include <string>

/// Why an archive cannot be unpacked, as a clause; empty for one that can, and for a file whose
/// name does not end in .zip.
std::string archiveProblem(const std::string& path);
