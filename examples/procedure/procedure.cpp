// A host procedure, built against the installed library: it sums up a CSV file of daily weather by
// the kind of weather, for the days above freezing.
//
//     procedure examples/data/weather.csv summary.csv

#include <filesystem>
#include <iostream>
#include <string>

#include "CFAppHost.h"
#include "Journal.h"
#include "TnOutput.h"
#include "bridge/JNIHvlProgram.h"
#include "hvl/HVLAggregate.h"
#include "hvl/HVLExpressionFun.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLWrite.h"
#include "runner/HVRunner.h"
#include "support/Paths.h"

namespace {

/// The engine takes absolute paths, as URLs.
std::string engineUrl(const char* file)
{
    return NormalizeHvlPathU(std::filesystem::absolute(file).string(), "file");
}

/// Each builder is one step. The last one generates the whole chain on the Java side.
std::string composeJob(const char* input, const char* output)
{
    JNIHvlProgram program;
    HVLRead read(&program);
    read.ReadCSV(engineUrl(input), true);
    HVLExpressionFun frostFree(&program);
    frostFree.SetFilterRecords(program.createHvlExpression("x.temp_min > 0", nullptr));
    frostFree.AddPredFunction(&read);
    HVLAggregate summary(&program);
    summary.AddAggregate("key", "weather", "weather");
    summary.AddAggregate("count", "", "days");
    summary.AddAggregate("mean", "temp_max", "mean_high");
    summary.AddPercentileAggregate(90, "wind", "wind_p90");
    summary.AddPredFunction(&frostFree);
    HVLWrite write(&program);
    write.WriteCSV(engineUrl(output));
    write.AddPredFunction(&summary);

    std::string job;
    if (write.GenerateHVL())
        program.getHvlText(job);
    return job;
}

bool runJob(HVRunner& runner, const std::string& job)
{
    std::cout << job << "\n";
    runner.prepareHVLJob(job);
    const bool isDone = runner.execute();
    runner.displayAllMessages(true, true);
    runner.cleanExecution();
    return isDone;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3) {
        std::cerr << "usage: procedure INPUT.csv OUTPUT.csv\n";
        return 2;
    }
    bool isDone = false;
    try {
        TnProcedure procedure("SUMMARIZE WEATHER");
        HVRunner runner(&procedure);
        isDone = runJob(runner, composeJob(argv[1], argv[2]));
    } catch (const std::exception& failure) {
        std::cerr << "procedure: " << failure.what() << "\n";
    }
    // What the library showed to the user is in the host's journal.
    for (const HostJournal::Entry& entry :
         HostJournal::instance().entries(HostJournal::Kind::Error))
        std::cerr << "procedure: " << entry.text << "\n";
    CFAppHost::removeTempDirectory();
    return isDone ? 0 : 1;
}
