// hvhost describes a file by groups, once as CSV and once as a page, against a program that
// computes the same statistics with one GROUP BY of the database alone. bench_groups DIR measures,
// bench_groups DIR STATEMENT "" is one run of the baseline.

#include <cstdio>
#include <filesystem>
#include <string>

#include "DuckDb.h"
#include "ProgramTask.h"

namespace {

constexpr double kMostPageMegabytes = 1.5;

/// A file of groups with two numbers and a text, and what hvhost makes of it.
struct Task
{
    std::string name;
    int records;
    int groups;
    std::string output; ///< its extension determines the form
    double limit;
};

const Task kOfCsv = {"describe 1,000 groups", 100'000, 1'000, "groups.csv", 10};
const Task kOfPage = {"page of 100 groups", 20'000, 100, "groups.html", 12};

std::string fileOf(const std::string& directory, const Task& task)
{
    return directory + "/groups" + std::to_string(task.groups) + ".hvbf";
}

/// Everything follows from the number of the row. One value in eleven is missing.
void prepare(const std::string& directory, const Task& task)
{
    bench::DuckDb(1).run(
        "COPY (SELECT i % " + std::to_string(task.groups) +
        " AS g, CASE WHEN i % 11 = 0 THEN NULL ELSE (i * 7919 % 100003) / 16 END AS a,"
        " i * 104729 % 99991 AS n, 'code ' || (i * 31 % 7) AS code FROM range(" +
        std::to_string(task.records) + ") t(i)) TO '" + fileOf(directory, task) +
        "' (FORMAT parquet)");
}

/// The statistics that hvhost finds for each group.
std::string statement(const std::string& directory, const Task& task)
{
    std::string columns = "g, count(*), count(code), count(DISTINCT code)";
    for (const std::string field : {"a", "n"}) {
        for (const char* function : {"count(", "count(DISTINCT ", "avg(", "stddev_samp(", "min(",
                                     "max(", "skewness(", "kurtosis("})
            columns += std::string(", ") + function + field + ")";
        columns += ", quantile_cont(" + field + ", [0.25, 0.5, 0.75])";
    }
    return "COPY (SELECT " + columns + " FROM read_parquet('" + fileOf(directory, task) +
           "') GROUP BY g ORDER BY g) TO '" + directory + "/baseline.csv' (FORMAT csv, HEADER)";
}

bool compare(const std::string& directory, const Task& task)
{
    return bench::compareProgram("bench_groups", directory,
                                 {task.name,
                                  {"describe", fileOf(directory, task), "--by", "g", "-o",
                                   directory + "/" + task.output, "--force"},
                                  statement(directory, task),
                                  task.limit});
}

bool isPageSmall(const std::string& directory)
{
    const double megabytes =
        static_cast<double>(std::filesystem::file_size(directory + "/" + kOfPage.output)) / 1e6;
    const bool fits = megabytes <= kMostPageMegabytes;
    std::printf("%s, size: %.3g MB (limit %.3g MB)%s\n", kOfPage.name.c_str(), megabytes,
                kMostPageMegabytes, fits ? "" : " OVER");
    return fits;
}

} // namespace

int main(int argc, char** argv)
{
    if (bench::isBaseline(argc)) {
        bench::runBaseline(argv);
        return 0;
    }
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench_groups DIR\n");
        return 2;
    }
    bool holds = true;
    for (const Task& task : {kOfCsv, kOfPage}) {
        prepare(argv[1], task);
        holds = compare(argv[1], task) && holds;
    }
    return isPageSmall(argv[1]) && holds ? 0 : 1;
}
