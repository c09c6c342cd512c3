#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Whether this byte of a UTF-8 text is the first byte of a character.
bool beginsCharacter(char byte);

/// The number of characters in a UTF-8 text.
std::size_t countCharacters(std::string_view text);

/// The text without blanks at both ends.
std::string trimmed(const std::string& text);

/// The text without line ends at its end. Messages of other programs may end with empty lines.
std::string withoutLineEnds(std::string text);

/// The text on one line and without control characters for a terminal.
std::string printable(std::string text);

/// The most similar of the words; empty if none is similar.
std::string nearestWord(const std::vector<std::string>& words, const std::string& word);
