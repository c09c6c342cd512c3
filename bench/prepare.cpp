// Ten million records made into a thousand series of a thousand points for each metric, from one
// binary file into another. Against the plain GROUP BY of the same file in the database alone,
// whose result is long and stays in memory. Each run is a process of its own: bench_prepare DIR
// measures, bench_prepare DIR SIDE is one run.

#include <cstdio>
#include <cstring>
#include <string>

#include "Child.h"
#include "DuckDb.h"
#include "Job.h"
#include "Measure.h"
#include "runner/HVRunner.h"

namespace {

struct Case
{
    const char* figure;
    const char* ours; ///< the name of the side
    const char* baseline;
    const char* settings;
    const char* columns; ///< of the GROUP BY
    double limit;
};

constexpr Case kCases[] = {
    {"prepare 10 million records: sum", "ours-sum", "baseline-sum",
     R"("metricFieldList": ["sales"], "aggregation": "sum")", "sum(sales)", 2.0},
    {"prepare 10 million records: mean", "ours-mean", "baseline-mean",
     R"("metricFieldList": ["price"], "aggregation": "mean")", "avg(price)", 2.0},
    {"prepare 10 million records: three metrics", "ours-three", "baseline-three",
     R"("metricFieldList": ["sales", "price", "visits"],
        "aggregation": {"default": "sum", "fields": {"price": "mean", "visits": "max"}})",
     "sum(sales), avg(price), max(visits)", 3.5},
};

std::string readStep(const std::string& path)
{
    return R"(read({"filesystem": {"locations": [{"path": ")" + bench::engineUrl(path) +
           R"(", "parser": {"name": "hvbf", "config": {}}}]}}))";
}

std::string writeStep(const std::string& path)
{
    return R"(write({"dataDestination": ")" + bench::engineUrl(path) +
           R"(", "dataModelDestination": "", "type": "hvbf"}))";
}

/// Ten records for each shop and day. Everything follows from the number of the row.
int makeFile(const std::string& directory)
{
    const std::string plain = directory + "/plain.parquet";
    bench::DuckDb(1).run("COPY (SELECT DATE '2000-01-01' + CAST(i // 10000 AS INTEGER) AS day,"
                         " 'shop ' || (i * 7919 % 1000) AS shop, (i * 104729 % 99991) / 8 AS sales,"
                         " (i * 15485863 % 9973) / 100 AS price, i * 32452843 % 997 AS visits"
                         " FROM range(10000000) t(i)) TO '" +
                         plain + "' (FORMAT parquet)");
    HVRunner runner;
    bench::runJob(runner, readStep(plain) + " -> " + writeStep(directory + "/records.hvbf"));
    return 0;
}

/// The engine's start is in the time, that of the Java virtual machine is not.
double prepareSeries(const std::string& directory, const Case& one)
{
    HVRunner runner;
    const bench::Stopwatch watch;
    bench::runJob(runner,
                  readStep(directory + "/records.hvbf") +
                      R"( -> tsdp:tsdp({"dateTimeField": "day", "dimFieldList": ["shop"], )" +
                      one.settings + R"(}, _,
                         [{"name": "JSON", "uri": ")" +
                      bench::engineUrl(directory + "/series.zip") + R"("}]) -> )" +
                      writeStep(directory + "/series.hvbf"));
    return watch.milliseconds();
}

double groupPlainly(const std::string& directory, const Case& one)
{
    const int threads = bench::engineThreads();
    const bench::Stopwatch watch;
    bench::DuckDb(threads).run("CREATE TABLE series AS SELECT day, shop, " +
                               std::string(one.columns) + " FROM read_parquet('" + directory +
                               "/records.hvbf') GROUP BY day, shop");
    return watch.milliseconds();
}

int runOnce(const std::string& directory, const char* side)
{
    for (const Case& one : kCases) {
        const bool isOurs = std::strcmp(side, one.ours) == 0;
        if (!isOurs && std::strcmp(side, one.baseline) != 0)
            continue;
        std::printf("%f\n", isOurs ? prepareSeries(directory, one) : groupPlainly(directory, one));
        return 0;
    }
    return 2;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 3)
        return std::strcmp(argv[2], "prepare") == 0 ? makeFile(argv[1]) : runOnce(argv[1], argv[2]);
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench_prepare DIR\n");
        return 2;
    }
    bench::runChild({bench::programDirectory() + "/bench_prepare", argv[1], "prepare"});
    int status = 0;
    for (const Case& one : kCases)
        status |= bench::compareSides("bench_prepare", argv[1], one.ours, one.baseline, one.figure,
                                      one.limit);
    return status;
}
