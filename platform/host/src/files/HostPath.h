#pragma once

#include <optional>
#include <string>

/// The two spellings of a path, both UTF-8: the host's with backslashes, the operating system's
/// with slashes. A name from the operating system that has a backslash in it has no host spelling.
std::string nativeSpelling(std::string path);
std::string hostSpelling(std::string path);

/// Names in the host's encoding. Where that is UTF-8 the bytes stay as they are, so that a file
/// whose name is not proper UTF-8 can still be reached.
std::string nameToUtf8(const std::string& generic);
/// Nothing if the host's encoding cannot write the name.
std::optional<std::string> nameFromUtf8(const std::string& utf8);
