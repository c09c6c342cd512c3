#include "ProgramTask.h"

#include <filesystem>

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
    const std::vector<std::string> baseline = {programs + "/" + program, directory, task.statement,
                                               task.output};
    const auto timeOf = [&](const std::vector<std::string>& command) {
        if (!task.output.empty())
            std::filesystem::remove(task.output);
        return runChild(command).wallMilliseconds;
    };
    const Comparison time = interleave(
        9, [&] { return timeOf(ours); }, [&] { return timeOf(baseline); });
    return report(task.name, time, "ms", task.limit);
}

bool isBaseline(int argc)
{
    return argc == 4;
}

void runBaseline(char** argv)
{
    DuckDb(engineThreads()).run(argv[2]);
    const std::string output = argv[3];
    if (!output.empty())
        synchronize(output);
}

} // namespace bench
