#pragma once

#include <string>

/// The separator behind a word of the command line: a character, or "tab"; 0 for anything else.
char separatorOf(const std::string& word);

/// The same for a person to read.
std::string separatorWord(char separator);

/// What separates the fields of a csv file by its first line: a comma if there is one outside of
/// quotes, else the one of the semicolon, the tab and the bar that is there most; a comma if there
/// is none.
char likelySeparator(const std::string& path);
