#pragma once

#include <string>
#include <vector>

namespace bench {

/// What a child process took.
struct ChildResult
{
    double wallMilliseconds = 0;
    double peakMegabytes = 0;
    /// What it wrote to its standard output.
    std::string output;
};

/// Runs a program to its end. A child that does not end with status 0 ends this process: a figure
/// of a run that failed is no figure. The caller stays small, because a child inherits its
/// parent's peak at the moment of its start.
ChildResult runChild(const std::vector<std::string>& command);

/// The directory that this program's file is in.
std::string programDirectory();

/// Compares two sides that each need a process of their own. Runs `program` of this directory with
/// DIRECTORY and the name of each side in turns, which prints milliseconds. Reports the figure, and
/// returns the exit status of the benchmark.
int compareSides(const std::string& program, const std::string& directory, const std::string& ours,
                 const std::string& baseline, const std::string& figure, double limit);

/// Runs `program` with DIRECTORY and "prepare" once, then compares its sides "ours" and "baseline".
int compareInChildren(const std::string& program, const std::string& directory,
                      const std::string& figure, double limit);

} // namespace bench
