#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Whether this byte of a UTF-8 text is the first one of a character.
bool beginsCharacter(char byte);

/// Characters, not bytes: what a terminal counts, and a person.
std::size_t countCharacters(std::string_view text);

/// The text without blanks around it.
std::string trimmed(const std::string& text);

/// The text without line ends behind it: what other programs say may end in empty lines.
std::string withoutLineEnds(std::string text);
