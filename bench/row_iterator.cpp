// Rows from memory: ten columns of doubles from a row iterator into an aggregate of nine of them,
// against the same aggregate on a Parquet file in the database alone. One thread each.

#include <cstdio>
#include <string>
#include <vector>

#include "CFAppHost.h"
#include "CFMetaData.h"
#include "DuckDb.h"
#include "Job.h"
#include "Measure.h"
#include "bridge/JNIHvlProgram.h"
#include "hvl/HVLAggregate.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLWrite.h"
#include "runner/HVRunner.h"
#include "runner/HVStatDataIterator.h"

namespace {

constexpr std::size_t columns = 10;
constexpr std::size_t rowCount = 2'000'000;

double valueAt(std::size_t row, std::size_t column)
{
    return static_cast<double>((row * 7919 + column * 104729) % 1000003) / 16;
}

std::string columnName(std::size_t column)
{
    return "v" + std::to_string(column);
}

/// Serves rows of doubles that lie one after the other.
class MemoryRows : public HVStatDataIterator
{
public:
    MemoryRows()
    {
        _values.reserve(rowCount * columns);
        for (std::size_t row = 0; row < rowCount; ++row)
            for (std::size_t column = 0; column < columns; ++column)
                _values.push_back(valueAt(row, column));
    }

    std::string getName() override { return "rows"; }

    std::string getDataModel() override
    {
        CFMetaData model;
        for (std::size_t column = 0; column < columns; ++column)
            model.AppendField(CFField(columnName(column), CFField::Continuous, CFField::Real));
        std::string xml;
        model.ExportXMLDoc(xml);
        return xml;
    }

    unsigned int nextRecord() override { return _next++ < rowCount ? RecordAvailable : EndOfData; }

    unsigned int getRecordValue(unsigned long long fieldIndex, void*& value,
                                unsigned long long& length) override
    {
        value = &_values[(_next - 1) * columns + fieldIndex];
        length = sizeof(double);
        return RecordAvailable;
    }

    void dispose(JNIEnv*) override { _next = 0; }

    void rewind() { _next = 0; }

private:
    std::vector<double> _values;
    std::size_t _next = 0;
};

std::string composeJob()
{
    JNIHvlProgram program;
    HVLRead read(&program);
    read.ReadIterator("rows");
    HVLAggregate aggregate(&program);
    for (std::size_t column = 1; column < columns; ++column)
        aggregate.AddAggregate("mean", columnName(column), columnName(column));
    aggregate.AddPredFunction(&read);
    HVLWrite write(&program);
    write.WriteHVDatasource("means", false);
    write.AddPredFunction(&aggregate);
    write.GenerateHVL();
    std::string job;
    program.getHvlText(job);
    return job;
}

void writeParquet(bench::DuckDb& database, const std::string& path)
{
    std::string select;
    for (std::size_t column = 0; column < columns; ++column)
        select += (column == 0 ? "" : ", ") + std::string("((i * 7919 + ") +
                  std::to_string(column * 104729) + ") % 1000003) / 16 AS " + columnName(column);
    database.run("COPY (SELECT " + select + " FROM range(" + std::to_string(rowCount) +
                 ") t(i)) TO '" + path + "' (FORMAT parquet)");
}

std::string aggregateQuery(const std::string& path)
{
    std::string select;
    for (std::size_t column = 1; column < columns; ++column)
        select +=
            (column == 1 ? "avg(" : ", avg(") + columnName(column) + ") AS " + columnName(column);
    return "CREATE OR REPLACE TEMP TABLE means AS SELECT " + select + " FROM read_parquet('" +
           path + "')";
}

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
    writeParquet(database, path);
    const std::string query = aggregateQuery(path);

    HVRunner runner;
    const std::string job = composeJob();
    MemoryRows rows;
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
