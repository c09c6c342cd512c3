#pragma once

#include <string>
#include <vector>

class VEXA_Variable;

/// The texts that a variable declares missing, whole and in UTF-8, without the blanks that fill
/// them up. A data model has only their beginnings.
std::vector<std::string> missingTexts(const VEXA_Variable& variable);
