#pragma once

#include <string>
#include <vector>

#include "CFField.h"

namespace datafile {

using Fields = std::vector<CFField>;

/// Folds the letter case of a name, for comparisons.
std::string foldedName(std::string name);

/// Whether two names are equal, ignoring letter case. Fast for many comparisons: allocates nothing
/// for ASCII names.
bool isSameName(const std::string& left, const std::string& right);

/// Makes names unique: appends "_1", "_2"... to names that repeat another, ignoring letter case. An
/// empty name becomes "field" and its position, from 1.
std::vector<std::string> uniqueNames(std::vector<std::string> names);

} // namespace datafile
