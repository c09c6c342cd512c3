#pragma once

#include <string>
#include <vector>

namespace bench {

/// Work of hvhost, and the statement of the database that does the same.
struct ProgramTask
{
    std::string name;
    std::vector<std::string> words; ///< of hvhost
    std::string statement;
    double limit;
    /// The file that both write. It is removed before each run. If this is empty, nothing is.
    std::string output = {};
};

/// Runs hvhost and, as the baseline, `program` of this directory with DIRECTORY, the statement and
/// the output, each as a process, in turns. Reports the figure, and returns whether it is within
/// its limit.
bool compareProgram(const std::string& program, const std::string& directory,
                    const ProgramTask& task);

/// Whether the arguments of a program are those of a run of the baseline.
bool isBaseline(int argc);
/// One run of the baseline, until the output is on the disk.
void runBaseline(char** argv);

} // namespace bench
