#pragma once

#include <string>

/// A name in the host's encoding in a form that is the same for all its spellings in upper and
/// lower case.
std::u16string foldedName(const std::string& name);
