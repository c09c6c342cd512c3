#pragma once

#include <optional>
#include <string>

/// Converts between the host's spelling of a path (backslashes) and the operating system's
/// (slashes); both are UTF-8. A name with a backslash from the operating system has no host
/// spelling.
std::string nativeSpelling(std::string path);
std::string hostSpelling(std::string path);

/// Converts a name from the host's encoding. If that is UTF-8, the bytes are unchanged, so that a
/// file with an invalid name can still be opened.
std::string nameToUtf8(const std::string& generic);
/// nullopt if the host's encoding cannot represent the name.
std::optional<std::string> nameFromUtf8(const std::string& utf8);
