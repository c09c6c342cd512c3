#pragma once

#include <string>
#include <string_view>

namespace datafile {

/// A host path as the operating system spells it: slashes, no trailing one.
std::string nativePath(const std::string& hostPath);
/// The part after the last separator.
std::string fileNameOf(const std::string& path);
/// The folder of a path; "." if the path names none.
std::string folderOf(const std::string& path);
/// Whether a path begins with a drive, which makes it absolute in the host's spelling, whatever
/// this system makes of it.
bool hasDrive(std::string_view path);

} // namespace datafile
