#pragma once

#include <string>

namespace datafile {

/// Checks a file before it is read: it must exist, be a regular file, not be empty, and open.
/// Throws Fault with the step, if there is one, and the file. The database's own messages lack the
/// reason and, for a pattern in a name, the file.
void checkInputFile(const std::string& path, const std::string& step);

/// The content of a small text file. Throws Fault.
std::string readSmallFile(const std::string& path, const std::string& step);

/// Escapes the characters of a path that the database would treat as a pattern.
std::string literalPath(const std::string& path);

} // namespace datafile
