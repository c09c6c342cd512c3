#pragma once

#include <string>

namespace datafile {

/// A host path as the operating system spells it: slashes, no trailing one.
std::string nativePath(const std::string& hostPath);
/// The part after the last separator.
std::string fileNameOf(const std::string& path);
/// The folder of a path; "." if the path names none.
std::string folderOf(const std::string& path);

} // namespace datafile
