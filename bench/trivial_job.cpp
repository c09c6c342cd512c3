// What a job costs beyond its query: a small file is filtered, aggregated and written, second and
// later jobs of a process, against the same query in the database alone.

#include <cstdio>
#include <filesystem>
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

std::string composeJob(const std::string& output)
{
    JNIHvlProgram program;
    HVLRead read(&program);
    read.ReadCSV(bench::engineUrl(BENCH_WEATHER), true);
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

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench_trivial_job DIR\n");
        return 2;
    }
    const std::string directory = argv[1];
    const std::string ours = directory + "/trivial.csv";
    const std::string baseline = directory + "/trivial_baseline.csv";
    HVRunner runner;
    const std::string job = composeJob(ours);
    bench::DuckDb database(bench::engineThreads());
    const std::string query =
        "COPY (SELECT weather, avg(wind) AS mean_wind FROM read_csv('" BENCH_WEATHER
        "', header = true) WHERE temp_max > 20 GROUP BY weather ORDER BY weather) TO '" +
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
            return watch.milliseconds();
        });
    return bench::report("trivial job", comparison, "ms", 3.0) ? 0 : 1;
}
