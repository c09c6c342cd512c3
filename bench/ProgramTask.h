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
};

/// Runs hvhost and, as the baseline, `program` of this directory with DIRECTORY and the statement,
/// each as a process, in turns. Reports the figure, and returns whether it is within its limit.
bool compareProgram(const std::string& program, const std::string& directory,
                    const ProgramTask& task);

/// One run of the baseline.
void runBaseline(const char* statement);

} // namespace bench
