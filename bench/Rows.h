#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "runner/HVStatDataIterator.h"

namespace bench {

class DuckDb;

/// The rows that the benchmarks of the data's road share: ten columns of doubles, v0 to v9, of
/// which everything follows from the numbers of row and column.
inline constexpr std::size_t rowColumns = 10;
double valueAt(std::size_t row, std::size_t column);
std::string columnName(std::size_t column);

/// Writes so many rows as a Parquet file.
void writeRows(DuckDb& database, const std::string& path, std::size_t rows);

/// The means of v1 to v9: as a query on such a file, and as a job that reads the iterator "rows".
std::string meansQuery(const std::string& path);
std::string meansJob();

/// Serves rows of doubles that lie one after the other, and does nothing else.
class MemoryRows : public HVStatDataIterator
{
public:
    explicit MemoryRows(std::size_t rows);

    std::string getName() override { return "rows"; }
    std::string getDataModel() override;
    unsigned int nextRecord() override { return _next++ < _rows ? RecordAvailable : EndOfData; }
    unsigned int getRecordValue(unsigned long long fieldIndex, void*& value,
                                unsigned long long& length) override
    {
        value = &_values[(_next - 1) * rowColumns + fieldIndex];
        length = sizeof(double);
        return RecordAvailable;
    }
    void dispose(JNIEnv*) override { rewind(); }
    void rewind() { _next = 0; }
    /// All of them, row after row.
    const std::vector<double>& values() const { return _values; }

private:
    std::vector<double> _values;
    std::size_t _rows;
    std::size_t _next = 0;
};

} // namespace bench
