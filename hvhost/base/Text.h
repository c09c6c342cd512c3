#pragma once

#include <string>
#include <vector>

#include "base/AsciiText.h"
#include "base/Utf8.h"

using base::beginsCharacter;
using base::countCharacters;
using base::trimmed;

/// The text without line ends at its end. Messages of other programs may end with empty lines.
std::string withoutLineEnds(std::string text);

/// The text on one line and without control characters for a terminal.
std::string printable(std::string text);

/// A hint for an unknown word: "did you mean WORD?" with the most similar of the words, or
/// `otherwise` if none is similar.
std::string nearestHint(const std::vector<std::string>& words, const std::string& word,
                        const std::string& otherwise);
