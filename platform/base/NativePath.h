#pragma once

#include <string>
#include <string_view>

namespace base {

/// Converts a host path to the operating system's spelling: slashes, without a trailing one.
std::string nativePath(const std::string& hostPath);
/// The part behind the last separator.
std::string fileNameOf(const std::string& path);
/// The folder of a path; "." if it has none.
std::string folderOf(const std::string& path);
/// Whether a path begins with a drive. It is then absolute in the host's spelling, also on this
/// system.
bool hasDrive(std::string_view path);

} // namespace base
