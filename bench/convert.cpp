// A table of three million rows from CSV to CSV and to HVBF, through the builders, the runner and
// the engine, against the same COPY in the database alone. Each run is a process of its own, so
// that its peak of memory is its own: bench_convert DIR measures, bench_convert DIR WHO KIND is one
// run.

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "Child.h"
#include "DuckDb.h"
#include "Job.h"
#include "Measure.h"
#include "bridge/JNIHvlProgram.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLWrite.h"
#include "runner/HVRunner.h"

namespace {

/// The engine's start is in the time, the start of the Java virtual machine is not: `startup`
/// measures that.
double convertByJob(const std::string& input, const std::string& output, const std::string& kind)
{
    HVRunner runner;
    JNIHvlProgram program;
    HVLRead read(&program);
    read.ReadCSV(bench::engineUrl(input), true);
    HVLWrite write(&program);
    write.AddPredFunction(&read);
    if (kind == "csv")
        write.WriteCSV(bench::engineUrl(output));
    else
        write.WriteHVBF(bench::engineUrl(output));
    std::string job;
    write.GenerateHVL();
    program.getHvlText(job);
    const bench::Stopwatch watch;
    bench::runJob(runner, job);
    return watch.milliseconds();
}

double convertByCopy(const std::string& input, const std::string& output, const std::string& kind)
{
    const int threads = bench::engineThreads();
    const bench::Stopwatch watch;
    bench::DuckDb database(threads);
    database.run("COPY (SELECT * FROM read_csv('" + input + "', header = true)) TO '" + output +
                 "' (FORMAT " + (kind == "csv" ? "csv, HEADER)" : "parquet)"));
    return watch.milliseconds();
}

int runOnce(const std::string& directory, const std::string& who, const std::string& kind)
{
    const std::string input = directory + "/rows.csv";
    const std::string output = directory + "/" + who + "." + kind;
    std::filesystem::remove(output);
    std::printf("%f\n", who == "ours" ? convertByJob(input, output, kind)
                                      : convertByCopy(input, output, kind));
    std::filesystem::remove(output);
    return 0;
}

bool compare(const std::string& directory, const std::string& kind)
{
    const std::string self = bench::programDirectory() + "/bench_convert";
    bench::Comparison time;
    bench::Comparison memory;
    // The first round warms the file cache.
    for (int round = -1; round < 5; ++round)
        for (const char* who : {"ours", "baseline"}) {
            const bench::ChildResult child = bench::runChild({self, directory, who, kind});
            if (round < 0)
                continue;
            const bool isOurs = who == std::string("ours");
            (isOurs ? time.ours : time.baseline).push_back(std::atof(child.output.c_str()));
            (isOurs ? memory.ours : memory.baseline).push_back(child.peakMegabytes);
        }
    const bool timeHolds = bench::report("convert to " + kind + ", time", time, "ms", 1.15);
    return bench::report("convert to " + kind + ", peak memory", memory, "MB", 1.25) && timeHolds;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 4)
        return runOnce(argv[1], argv[2], argv[3]);
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench_convert DIR\n");
        return 2;
    }
    const bool csvHolds = compare(argv[1], "csv");
    return compare(argv[1], "hvbf") && csvHolds ? 0 : 1;
}
