#pragma once

#include <string>

namespace datafile {

/// Looks at a file before it is read: it must be there, be a regular file, not be empty, and open.
/// Throws Fault that names the step, if there is one, and the file. The database's own messages
/// would name neither the reason nor, for a pattern in a name, the file.
void checkInputFile(const std::string& path, const std::string& step);

/// The whole of a small text file. Throws Fault.
std::string readSmallFile(const std::string& path, const std::string& step);

/// The path as the database takes it: characters that it would match as a pattern are escaped.
std::string literalPath(const std::string& path);

} // namespace datafile
