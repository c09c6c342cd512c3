// hvhost from start to end, by the road that it chooses, against a program that does the same work
// with the database alone, until its file is on the disk. bench_programs DIR measures,
// bench_programs DIR STATEMENT OUTPUT is one run of the baseline. The records are those of
// `convert`.

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "DuckDb.h"
#include "Job.h"
#include "ProgramTask.h"

namespace {

std::vector<bench::ProgramTask> tasks(const std::string& directory)
{
    const std::string csv = directory + "/rows.csv";
    const std::string parquet = directory + "/rows.hvbf";
    const std::string out = directory + "/programs.";
    const std::string ofCsv = "(SELECT * FROM read_csv('" + csv + "', header = true))";
    const std::string ofParquet = "(SELECT * FROM read_parquet('" + parquet + "'))";
    return {
        {"hvhost convert csv to csv",
         {"convert", csv, out + "csv"},
         "COPY " + ofCsv + " TO '" + out + "csv' (FORMAT csv, HEADER)",
         1.15,
         out + "csv"},
        {"hvhost convert hvbf to csv",
         {"convert", parquet, out + "csv"},
         "COPY " + ofParquet + " TO '" + out + "csv' (FORMAT csv, HEADER)",
         1.15,
         out + "csv"},
        {"hvhost convert csv to sav",
         {"convert", csv, out + "sav"},
         "COPY " + ofCsv + " TO '" + out + "sav' (FORMAT parquet)",
         1.15,
         out + "sav"},
        {"hvhost aggregate",
         {"aggregate", csv, "--by", "grp", "--stat", "count", "--stat", "mean:a", out + "csv"},
         "COPY (SELECT grp, count(*), avg(a) FROM " + ofCsv + " GROUP BY grp) TO '" + out +
             "csv' (FORMAT csv, HEADER)",
         1.2,
         out + "csv"},
    };
}

void prepare(const std::string& directory)
{
    bench::DuckDb database(bench::engineThreads());
    database.run("COPY (SELECT * FROM read_csv('" + directory + "/rows.csv', header = true)) TO '" +
                 directory + "/rows.hvbf' (FORMAT parquet)");
}

} // namespace

int main(int argc, char** argv)
{
    if (bench::isBaseline(argc)) {
        bench::runBaseline(argv);
        return 0;
    }
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench_programs DIR\n");
        return 2;
    }
    prepare(argv[1]);
    bool holds = true;
    for (const bench::ProgramTask& task : tasks(argv[1]))
        holds = bench::compareProgram("bench_programs", argv[1], task) && holds;
    return holds ? 0 : 1;
}
