#pragma once

/// Parses the command line and runs the command. Reports errors on standard error. Returns the exit
/// status of the process.
int runCommandLine(int count, char** words);
