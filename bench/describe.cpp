// Three million rows of ten fields described: the host opens the file and serves its cases, and the
// engine finds statistics and distinct values. Against what the database has for that, its summary
// of the same file and the distinct counts of the same fields. Each run is a process of its own:
// bench_describe DIR measures, bench_describe DIR WHO is one run.

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "Child.h"
#include "DuckDb.h"
#include "Job.h"
#include "Measure.h"
#include "UserCaseFile.h"
#include "bridge/JNIHvlProgram.h"
#include "data/HVRawDataIterator.h"
#include "descriptive/HVDescriptive.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLWrite.h"
#include "runner/HVRunner.h"
#include "support/Paths.h"

namespace {

constexpr int kMostDistinctValues = 100;

const std::vector<std::string>& fields()
{
    static const std::vector<std::string> names = {"day", "grp", "code",  "a",     "b",
                                                   "c",   "n",   "level", "score", "rate"};
    return names;
}

/// Everything follows from the number of the row. The file is the engine's own, as the host has
/// them, and one that the database reads as well.
int makeFile(const std::string& directory)
{
    const std::string plain = directory + "/plain.parquet";
    bench::DuckDb(1).run(
        "COPY (SELECT DATE '2000-01-01' + CAST(i % 9000 AS INTEGER) AS day,"
        " 'group ' || (i % 97) AS grp, 'code ' || (i % 1013) AS code,"
        " (i * 7919 % 100003) / 16 AS a, (i * 104729 % 99991) / 8 AS b,"
        " CASE WHEN i % 13 = 0 THEN NULL ELSE (i * 1299709 % 1000003) / 1024 END AS c,"
        " i % 1000 AS n, i % 7 AS level, (i * 31 % 101) / 4 AS score, sin(i) AS rate"
        " FROM range(3000000) t(i)) TO '" +
        plain + "' (FORMAT parquet)");
    HVRunner runner;
    JNIHvlProgram program;
    HVLRead read(&program);
    read.ReadHVBF(bench::engineUrl(plain));
    HVLWrite write(&program);
    write.AddPredFunction(&read);
    write.WriteHVBF(bench::engineUrl(directory + "/described.hvbf"));
    std::string job;
    write.GenerateHVL();
    program.getHvlText(job);
    bench::runJob(runner, job);
    return 0;
}

/// From opening the file on; the engine's start is in the time, that of the Java virtual machine is
/// not.
double describeByHost(const std::string& path)
{
    HVRunner runner;
    const bench::Stopwatch watch;
    UserCaseFileSpec spec;
    spec.Init(FormalizeFilePath(path, false), true, false);
    const UserInputCaseFile file(spec, nullptr);
    HVRawDataIterator cases(*file.DataSource(), fields(), {}, false, kWeightNone, false, true,
                            nullptr);
    cases.SetName("cases");
    HVDescriptive descriptive(runner, &cases);
    CFMetaData model;
    if (!descriptive.BuildMetaData(&fields(), model, kMostDistinctValues, false) ||
        model.FieldCount() != fields().size()) {
        std::fprintf(stderr, "bench: the file is not described\n");
        std::exit(1);
    }
    return watch.milliseconds();
}

double describeByDatabase(const std::string& path)
{
    const std::string source = "read_parquet('" + path + "')";
    const int threads = bench::engineThreads();
    std::string counts;
    for (const std::string& field : fields())
        counts += (counts.empty() ? "SELECT count(DISTINCT " : ", count(DISTINCT ") + field + ")";
    const bench::Stopwatch watch;
    bench::DuckDb database(threads);
    database.run("SUMMARIZE SELECT * FROM " + source);
    database.run(counts + " FROM " + source);
    return watch.milliseconds();
}

int runOnce(const std::string& directory, const std::string& who)
{
    if (who == "prepare")
        return makeFile(directory);
    const std::string path = directory + "/described.hvbf";
    std::printf("%f\n", who == "ours" ? describeByHost(path) : describeByDatabase(path));
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 3)
        return runOnce(argv[1], argv[2]);
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench_describe DIR\n");
        return 2;
    }
    return bench::compareInChildren("bench_describe", argv[1], "describe 3 million rows", 1.3);
}
