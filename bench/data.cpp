// Writes the table that the large benchmarks read: bench_data DIR makes DIR/rows.csv.

#include <cstdio>
#include <string>

#include "DuckDb.h"

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: bench_data DIR\n");
        return 2;
    }
    // Reproducible by construction: everything follows from the number of the row.
    bench::DuckDb(1).run(
        "COPY (SELECT i AS id, DATE '2000-01-01' + CAST(i % 9000 AS INTEGER) AS day,"
        " 'group ' || (i % 97) AS grp, (i * 7919 % 100003) / 16 AS a, (i * 104729 % 99991) / 8 AS "
        "b,"
        " (i * 1299709 % 1000003) / 1024 AS c, i % 1000 AS n,"
        " CASE WHEN i % 13 = 0 THEN NULL ELSE 'text, \"' || (i % 1013) || '\"' END AS note"
        " FROM range(3000000) t(i)) TO '" +
        std::string(argv[1]) + "/rows.csv' (FORMAT csv, HEADER)");
    return 0;
}
