// Three million rows of ten fields described: the host opens the file and serves its cases, and the
// engine finds statistics and distinct values. Against what the database has for that, its summary
// of the same file and the distinct counts of the same fields. The same of a file of 2,000 fields.
// Each run is a process of its own: bench_describe DIR measures, bench_describe DIR WHO is one run.

#include <algorithm>
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

constexpr int kWideFields = 2000;

/// A file and its fields.
struct Described
{
    std::string path;
    std::vector<std::string> fields;
};

Described longFile(const std::string& directory)
{
    return {directory + "/described.hvbf",
            {"day", "grp", "code", "a", "b", "c", "n", "level", "score", "rate"}};
}

Described wideFile(const std::string& directory)
{
    Described wide{directory + "/wide.hvbf", {}};
    for (int i = 0; i < kWideFields; ++i)
        wide.fields.push_back("v" + std::to_string(i));
    return wide;
}

/// Everything follows from the number of the row.
std::string longRecords()
{
    return "SELECT DATE '2000-01-01' + CAST(i % 9000 AS INTEGER) AS day,"
           " 'group ' || (i % 97) AS grp, 'code ' || (i % 1013) AS code,"
           " (i * 7919 % 100003) / 16 AS a, (i * 104729 % 99991) / 8 AS b,"
           " CASE WHEN i % 13 = 0 THEN NULL ELSE (i * 1299709 % 1000003) / 1024 END AS c,"
           " i % 1000 AS n, i % 7 AS level, (i * 31 % 101) / 4 AS score, sin(i) AS rate"
           " FROM range(3000000) t(i)";
}

std::string wideRecords()
{
    std::string columns;
    for (int i = 0; i < kWideFields; ++i) {
        const std::string value = "(i * 7919 % " + std::to_string(i + 101) + ")";
        columns += (i == 0 ? "SELECT " : ", ") +
                   (i % 50 == 0 ? "'code ' || " + value + " % 20" : value + " / 8") + " AS v" +
                   std::to_string(i);
    }
    return columns + " FROM range(2000) t(i)";
}

/// The file is the engine's own, as the host has them, and one that the database reads as well.
void makeFile(const std::string& directory, const std::string& select, const std::string& path)
{
    const std::string plain = directory + "/plain.parquet";
    bench::DuckDb(1).run("COPY (" + select + ") TO '" + plain + "' (FORMAT parquet)");
    HVRunner runner;
    JNIHvlProgram program;
    HVLRead read(&program);
    read.ReadHVBF(bench::engineUrl(plain));
    HVLWrite write(&program);
    write.AddPredFunction(&read);
    write.WriteHVBF(bench::engineUrl(path));
    std::string job;
    write.GenerateHVL();
    program.getHvlText(job);
    bench::runJob(runner, job);
}

/// From opening the file on; the engine's start is in the time, that of the Java virtual machine is
/// not.
double describeByHost(const Described& described)
{
    HVRunner runner;
    const bench::Stopwatch watch;
    UserCaseFileSpec spec;
    spec.Init(FormalizeFilePath(described.path, false), true, false);
    const UserInputCaseFile file(spec, nullptr);
    HVRawDataIterator cases(*file.DataSource(), described.fields, {}, false, kWeightNone, false,
                            true, nullptr);
    cases.SetName("cases");
    HVDescriptive descriptive(runner, &cases);
    CFMetaData model;
    if (!descriptive.BuildMetaData(&described.fields, model, kMostDistinctValues, false) ||
        model.FieldCount() != described.fields.size()) {
        std::fprintf(stderr, "bench: the file is not described\n");
        std::exit(1);
    }
    return watch.milliseconds();
}

double describeByDatabase(const Described& described)
{
    const std::string source = "read_parquet('" + described.path + "')";
    const int threads = bench::engineThreads();
    std::string counts;
    for (const std::string& field : described.fields)
        counts += (counts.empty() ? "SELECT count(DISTINCT " : ", count(DISTINCT ") + field + ")";
    const bench::Stopwatch watch;
    bench::DuckDb database(threads);
    database.run("SUMMARIZE SELECT * FROM " + source);
    database.run(counts + " FROM " + source);
    return watch.milliseconds();
}

int runOnce(const std::string& directory, const std::string& who)
{
    if (who == "prepare") {
        makeFile(directory, longRecords(), longFile(directory).path);
        makeFile(directory, wideRecords(), wideFile(directory).path);
        return 0;
    }
    const bool isWide = who.starts_with("wide ");
    const Described described = isWide ? wideFile(directory) : longFile(directory);
    std::printf("%f\n",
                who.ends_with("ours") ? describeByHost(described) : describeByDatabase(described));
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
    const int rows =
        bench::compareInChildren("bench_describe", argv[1], "describe 3 million rows", 1.2);
    const int fields = bench::compareSides("bench_describe", argv[1], "wide ours", "wide baseline",
                                           "describe 2,000 fields", 1.5);
    return std::max(rows, fields);
}
