#pragma once

/// Reads the command line, runs the command and gives the exit status of the process. Faults go to
/// standard error.
int runCommandLine(int count, char** words);
