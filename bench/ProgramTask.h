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
    std::string output = {}; ///< a file that both write anew in each run; empty for none
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
