#pragma once

#include <string>

/// The reason why an archive cannot be unpacked, as a clause. Empty if it can be, and for a file
/// whose name does not end in .zip.
std::string archiveProblem(const std::string& path);
