#pragma once

#include <initializer_list>
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

/// The pattern with ^1, ^2 and so on replaced by the parts. A place without a part stays.
std::string filled(const std::string& pattern, std::initializer_list<std::string> parts);

/// Gives the text for a key, which is the text in English.
using Wording = std::string (*)(const std::string& key);
/// For programs, and for messages that people search for.
std::string inEnglish(const std::string& key);

/// A hint for an unknown word: "did you mean WORD?" with the most similar of the words, or
/// `otherwise` if none is similar.
std::string nearestHint(const std::vector<std::string>& words, const std::string& word,
                        const std::string& otherwise);
