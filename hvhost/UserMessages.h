#pragma once

#include <string>

/// What hvhost says to its user and writes into its log goes through here.

/// Remembers the web addresses among the words of the command line: messages show them without
/// user info and query, which may hold a key.
void rememberAddresses(int count, char** words);

/// The text in lines that cannot command a terminal or be taken for two messages: the second line
/// and those behind it are indented. It shows remembered addresses without their secrets.
std::string shownMessage(const std::string& text);

/// Prints a message on standard error, and ends the line.
void printMessage(const std::string& text);
