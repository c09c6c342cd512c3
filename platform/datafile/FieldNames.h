#pragma once

#include <string>
#include <vector>

#include "CFField.h"

namespace datafile {

using Fields = std::vector<CFField>;

/// The name in a form that is the same for all its spellings in upper and lower case.
std::string foldedName(std::string name);

/// Whether two names are the same, letter case apart. For many comparisons: it allocates nothing
/// for names of ASCII.
bool isSameName(const std::string& left, const std::string& right);

/// The names with what repeats them, letter case apart, told apart by "_1", "_2"...; an empty name
/// becomes "field" with its place, counted from 1.
std::vector<std::string> uniqueNames(std::vector<std::string> names);

} // namespace datafile
