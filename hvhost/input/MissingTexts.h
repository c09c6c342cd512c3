#pragma once

#include <string>
#include <vector>

class VEXA_Variable;

/// The complete texts that a variable declares missing, in UTF-8 and without padding blanks. A data
/// model truncates them.
std::vector<std::string> missingTexts(const VEXA_Variable& variable);
