#pragma once

#include <string>

/// The separator for a word of the command line: a character, or "tab". Returns 0 if the word is
/// invalid.
char separatorOf(const std::string& word);

/// The separator as shown to the user.
std::string separatorWord(char separator);
