#pragma once

#include <string>

/// All messages to the user and all lines of the log pass through here.

/// Stores the web addresses on the command line. Messages show them without user info and query,
/// because these may contain a key.
void rememberAddresses(int count, char** words);

/// The text without control characters for a terminal. Lines after the first are indented, so that
/// they do not look like another message. Stored addresses are shown without their secrets.
std::string shownMessage(const std::string& text);

/// Prints a message and a line end on standard error, from any thread.
void printMessage(const std::string& text);
