#pragma once

#include <cstdint>
#include <string>

/// The separator for a word of the command line: a character, or "tab". Returns 0 if the word is
/// invalid.
char separatorOf(const std::string& word);

/// The separator as shown to the user.
std::string separatorWord(char separator);

/// The most likely separator of a text file, from its first lines. A separator is as often in each
/// line. The first `skipped` lines, and those that begin with `comment`, do not count.
char likelySeparator(const std::string& path, std::uint64_t skipped = 0, char comment = '\0');
