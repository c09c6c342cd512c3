// Rows from memory: ten columns of doubles from a row iterator into an aggregate of nine of them,
// against the same aggregate on a Parquet file in the database alone. One thread each.

#include <cstdio>
#include <string>

#include "CFAppHost.h"
#include "DuckDb.h"
#include "Job.h"
#include "Measure.h"
#include "Rows.h"
#include "runner/HVRunner.h"

namespace {

constexpr std::size_t rowCount = 2'000'000;

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench_row_iterator DIR\n");
        return 2;
    }
    const std::string path = argv[1] + std::string("/rows.parquet");
    CFAppHost::getInstance()->setMaxCompThreads(1);
    bench::DuckDb database(1);
    bench::writeRows(database, path, rowCount);
    const std::string query = bench::meansQuery(path);

    HVRunner runner;
    const std::string job = bench::meansJob();
    bench::MemoryRows rows(rowCount);
    const bench::Comparison comparison = bench::interleave(
        9,
        [&] {
            rows.rewind();
            const bench::Stopwatch watch;
            bench::runJob(runner, job, &rows);
            return watch.milliseconds();
        },
        [&] {
            const bench::Stopwatch watch;
            database.run(query);
            return watch.milliseconds();
        });
    return bench::report("row iterator into an aggregate", comparison, "ms", 1.0) ? 0 : 1;
}
