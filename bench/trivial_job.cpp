// What a job costs beyond its query: a small file is filtered, aggregated and written, second and
// later jobs of a process, against the same query in the database alone. The HVBF file shows the
// cost of the job; with the CSV file the baseline spends most of its time on guessing the form.
// Both wait until their file is on the disk, since a job gives its result a name only then.

#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>

#include "DuckDb.h"
#include "Job.h"
#include "Measure.h"
#include "bridge/JNIHvlProgram.h"
#include "hvl/HVLAggregate.h"
#include "hvl/HVLExpressionFun.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLWrite.h"
#include "runner/HVRunner.h"

namespace {

using Source = std::function<void(HVLRead&)>;

void readCsv(HVLRead& read)
{
    read.ReadCSV(bench::engineUrl(BENCH_WEATHER), true);
}

std::string composeConversion(const std::string& output)
{
    JNIHvlProgram program;
    HVLRead read(&program);
    readCsv(read);
    HVLWrite write(&program);
    write.WriteHVBF(bench::engineUrl(output));
    write.AddPredFunction(&read);
    write.GenerateHVL();
    std::string job;
    program.getHvlText(job);
    return job;
}

std::string composeJob(const Source& source, const std::string& output)
{
    JNIHvlProgram program;
    HVLRead read(&program);
    source(read);
    HVLExpressionFun warm(&program);
    warm.SetFilterRecords(program.createHvlExpression("x.temp_max > 20", nullptr));
    warm.AddPredFunction(&read);
    HVLAggregate aggregate(&program);
    aggregate.AddAggregate("key", "weather", "weather");
    aggregate.AddAggregate("mean", "wind", "mean_wind");
    aggregate.AddPredFunction(&warm);
    HVLWrite write(&program);
    write.WriteCSV(bench::engineUrl(output));
    write.AddPredFunction(&aggregate);
    write.GenerateHVL();
    std::string job;
    program.getHvlText(job);
    return job;
}

/// The job and the query on one file, each with an output of its own.
bool compare(HVRunner& runner, const std::string& directory, const std::string& form,
             const Source& source, const std::string& table)
{
    const std::string ours = directory + "/trivial.csv";
    const std::string baseline = directory + "/trivial_baseline.csv";
    const std::string job = composeJob(source, ours);
    bench::DuckDb database(bench::engineThreads());
    const std::string query = "COPY (SELECT weather, avg(wind) AS mean_wind FROM " + table +
                              " WHERE temp_max > 20 GROUP BY weather ORDER BY weather) TO '" +
                              baseline + "' (FORMAT csv, HEADER)";
    const bench::Comparison comparison = bench::interleave(
        50,
        [&] {
            std::filesystem::remove(ours);
            const bench::Stopwatch watch;
            bench::runJob(runner, job);
            return watch.milliseconds();
        },
        [&] {
            std::filesystem::remove(baseline);
            const bench::Stopwatch watch;
            database.run(query);
            bench::synchronize(baseline);
            return watch.milliseconds();
        });
    return bench::report("trivial job on " + form, comparison, "ms", 3.0);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench_trivial_job DIR\n");
        return 2;
    }
    const std::string directory = argv[1];
    const std::string hvbf = directory + "/weather.hvbf";
    HVRunner runner;
    bench::runJob(runner, composeConversion(hvbf));
    const bool hvbfHolds = compare(
        runner, directory, "HVBF", [&](HVLRead& read) { read.ReadHVBF(bench::engineUrl(hvbf)); },
        "read_parquet('" + hvbf + "')");
    const bool csvHolds =
        compare(runner, directory, "CSV", readCsv, "read_csv('" BENCH_WEATHER "', header = true)");
    return hvbfHolds && csvHolds ? 0 : 1;
}
