// A dataset that is streamed from its file through the host and a row iterator into an aggregate of
// nine columns, against the same aggregate on the same file in the database alone. One thread each.

#include <cstdio>
#include <string>
#include <vector>

#include "CFAppHost.h"
#include "Cases.h"
#include "DuckDb.h"
#include "Job.h"
#include "Measure.h"
#include "Rows.h"
#include "data/HVRawDataIterator.h"
#include "runner/HVRunner.h"

namespace {

constexpr std::size_t caseCount = 2'000'000;
/// Six tenths of the speed.
/// Of the exact mean and of the host's interface, see docs/performance.md.
constexpr double limit = 1.75;

/// A job from the opening of the file on.
double aggregateCases(HVRunner& runner, const std::string& job, const std::string& path)
{
    std::vector<std::string> names;
    for (std::size_t column = 1; column < bench::rowColumns; ++column)
        names.push_back(bench::columnName(column));
    const bench::Stopwatch watch;
    const auto file = bench::openCases(path);
    HVRawDataIterator cases(*file->DataSource(), names, std::vector<MeasurementLevel>(), false,
                            kWeightNone, false, true, nullptr);
    cases.SetName("rows");
    bench::runJob(runner, job, &cases);
    return watch.milliseconds();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench_dataset DIR\n");
        return 2;
    }
    CFAppHost::getInstance()->setMaxCompThreads(1);
    bench::DuckDb database(1);
    HVRunner runner;
    const std::string job = bench::meansJob();
    bool holds = true;
    const auto compare = [&](const std::string& kind, const std::string& path) {
        const bench::Comparison comparison = bench::interleave(
            9, [&] { return aggregateCases(runner, job, path); },
            [&] {
                const bench::Stopwatch watch;
                database.run(bench::meansQuery(path));
                return watch.milliseconds();
            });
        holds =
            bench::report("dataset in " + kind + " into an aggregate", comparison, "ms", limit) &&
            holds;
    };
    const std::string parquet = argv[1] + std::string("/dataset.parquet");
    bench::writeRows(database, parquet, caseCount);
    compare("Parquet", parquet);
    const std::string sav = argv[1] + std::string("/dataset.sav");
    bench::writeCases(sav, caseCount);
    compare("SAV", sav);
    return holds ? 0 : 1;
}
