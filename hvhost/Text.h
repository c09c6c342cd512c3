#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Whether this byte of a UTF-8 text is the first one of a character.
bool beginsCharacter(char byte);

/// Characters, not bytes: what a terminal counts, and a person.
std::size_t countCharacters(std::string_view text);

/// The text without blanks around it.
std::string trimmed(const std::string& text);

/// The text without line ends behind it: what other programs say may end in empty lines.
std::string withoutLineEnds(std::string text);

/// The text on one line, and without what would steer a terminal.
std::string printable(std::string text);

/// The one of the words that is most like another; empty if none is like it.
std::string nearestWord(const std::vector<std::string>& words, const std::string& word);
