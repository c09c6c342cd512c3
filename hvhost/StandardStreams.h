#pragma once

#include <string>

class InterruptWatch;

/// Data that a command takes from standard input or gives to standard output stands in a file while
/// the engine works on it. Both ways wait for the other side of the stream no longer than until the
/// user interrupts the command. They throw CommandFault.

/// Fetches all of standard input into a file.
void fetchStandardInput(const std::string& path, const InterruptWatch& watch);
/// Copies a file to standard output.
void deliverToStandardOutput(const std::string& path, const InterruptWatch& watch);
