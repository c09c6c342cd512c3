// Ten million records made into a thousand series of a thousand points, from one binary file into
// another. Against the plain GROUP BY of the same file in the database alone, whose result is long
// and stays in memory. Each run is a process of its own: bench_prepare DIR measures, bench_prepare
// DIR WHO is one run.

#include <cstdio>
#include <cstdlib>
#include <string>

#include "Child.h"
#include "DuckDb.h"
#include "Job.h"
#include "Measure.h"
#include "runner/HVRunner.h"

namespace {

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
                         " 'shop ' || (i * 7919 % 1000) AS shop, (i * 104729 % 99991) / 8 AS sales"
                         " FROM range(10000000) t(i)) TO '" +
                         plain + "' (FORMAT parquet)");
    HVRunner runner;
    bench::runJob(runner, readStep(plain) + " -> " + writeStep(directory + "/records.hvbf"));
    return 0;
}

/// The engine's start is in the time, that of the Java virtual machine is not.
double prepareSeries(const std::string& directory)
{
    HVRunner runner;
    const bench::Stopwatch watch;
    bench::runJob(runner, readStep(directory + "/records.hvbf") +
                              R"( -> tsdp:tsdp({"dateTimeField": "day", "dimFieldList": ["shop"],
                         "metricFieldList": ["sales"], "aggregation": "sum"}, _,
                         [{"name": "JSON", "uri": ")" +
                              bench::engineUrl(directory + "/series.zip") + R"("}]) -> )" +
                              writeStep(directory + "/series.hvbf"));
    return watch.milliseconds();
}

double groupPlainly(const std::string& directory)
{
    const int threads = bench::engineThreads();
    const bench::Stopwatch watch;
    bench::DuckDb(threads).run("CREATE TABLE series AS SELECT day, shop, sum(sales) FROM "
                               "read_parquet('" +
                               directory + "/records.hvbf') GROUP BY day, shop");
    return watch.milliseconds();
}

int runOnce(const std::string& directory, const std::string& who)
{
    if (who == "prepare")
        return makeFile(directory);
    std::printf("%f\n", who == "ours" ? prepareSeries(directory) : groupPlainly(directory));
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 3)
        return runOnce(argv[1], argv[2]);
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench_prepare DIR\n");
        return 2;
    }
    return bench::compareInChildren("bench_prepare", argv[1], "prepare 10 million records", 2.0);
}
