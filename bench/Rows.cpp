#include "Rows.h"

#include "CFMetaData.h"
#include "DuckDb.h"
#include "bridge/JNIHvlProgram.h"
#include "hvl/HVLAggregate.h"
#include "hvl/HVLRead.h"
#include "hvl/HVLWrite.h"

namespace bench {

double valueAt(std::size_t row, std::size_t column)
{
    return static_cast<double>((row * 7919 + column * 104729) % 1000003) / 16;
}

std::string columnName(std::size_t column)
{
    return "v" + std::to_string(column);
}

void writeRows(DuckDb& database, const std::string& path, std::size_t rows)
{
    std::string select;
    for (std::size_t column = 0; column < rowColumns; ++column)
        select += (column == 0 ? "" : ", ") + std::string("((i * 7919 + ") +
                  std::to_string(column * 104729) + ") % 1000003) / 16 AS " + columnName(column);
    database.run("COPY (SELECT " + select + " FROM range(" + std::to_string(rows) + ") t(i)) TO '" +
                 path + "' (FORMAT parquet)");
}

std::string meansQuery(const std::string& path)
{
    std::string select;
    for (std::size_t column = 1; column < rowColumns; ++column)
        select +=
            (column == 1 ? "avg(" : ", avg(") + columnName(column) + ") AS " + columnName(column);
    return "CREATE OR REPLACE TEMP TABLE means AS SELECT " + select + " FROM read_parquet('" +
           path + "')";
}

std::string meansJob()
{
    JNIHvlProgram program;
    HVLRead read(&program);
    read.ReadIterator("rows");
    HVLAggregate aggregate(&program);
    for (std::size_t column = 1; column < rowColumns; ++column)
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

MemoryRows::MemoryRows(std::size_t rows) : _rows(rows)
{
    _values.reserve(rows * rowColumns);
    for (std::size_t row = 0; row < rows; ++row)
        for (std::size_t column = 0; column < rowColumns; ++column)
            _values.push_back(valueAt(row, column));
}

std::string MemoryRows::getDataModel()
{
    CFMetaData model;
    for (std::size_t column = 0; column < rowColumns; ++column)
        model.AppendField(CFField(columnName(column), CFField::Continuous, CFField::Real));
    std::string xml;
    model.ExportXMLDoc(xml);
    return xml;
}

} // namespace bench
