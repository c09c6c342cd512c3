#include "ProgramTask.h"

#include "Child.h"
#include "DuckDb.h"
#include "Job.h"
#include "Measure.h"

namespace bench {

bool compareProgram(const std::string& program, const std::string& directory,
                    const ProgramTask& task)
{
    const std::string programs = programDirectory();
    std::vector<std::string> ours = {programs + "/hvhost"};
    ours.insert(ours.end(), task.words.begin(), task.words.end());
    const std::vector<std::string> baseline = {programs + "/" + program, directory, task.statement};
    const Comparison time = interleave(
        9, [&] { return runChild(ours).wallMilliseconds; },
        [&] { return runChild(baseline).wallMilliseconds; });
    return report(task.name, time, "ms", task.limit);
}

void runBaseline(const char* statement)
{
    DuckDb(engineThreads()).run(statement);
}

} // namespace bench
