#pragma once

#include <duckdb.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "CFField.h"

namespace EmbeddedHV {

/// A column of a chunk under construction. Converts values of the row protocol to the database's
/// types. Dates, times and timestamps are doubles in the protocol but have their own types in the
/// database.
class RowColumn
{
public:
    RowColumn(const CFField& field, std::size_t fieldIndex, duckdb_vector vector);

    std::size_t fieldIndex() const { return _fieldIndex; }
    void setMissing(std::size_t row);
    /// The values of a column of reals; null for another column.
    double* reals() const
    {
        return _storage == CFField::Real ? static_cast<double*>(_data) : nullptr;
    }
    /// How many dates lost a time of day.
    std::uint64_t timesDropped() const { return _timesDropped; }
    /// Stores a value. Returns false if the column cannot hold it; `problem` then gives the reason.
    bool set(std::size_t row, const void* value, std::size_t length, std::string& problem)
    {
        // The most frequent case. A column of reals can hold any double.
        if (_storage != CFField::Real)
            return setOther(row, value, length, problem);
        std::memcpy(static_cast<double*>(_data) + row, value, sizeof(double));
        return true;
    }

private:
    bool setOther(std::size_t row, const void* value, std::size_t length, std::string& problem);
    bool setNumber(std::size_t row, double value, std::string& problem);
    bool setText(std::size_t row, const char* text, std::size_t length, std::string& problem);
    bool setDate(std::size_t row, double days, std::string& problem);
    bool setMicroseconds(std::size_t row, double seconds, double least, double most,
                         std::string& problem);

    CFField::StorageType _storage;
    std::size_t _fieldIndex;
    duckdb_vector _vector;
    void* _data;
    bool _hasValidity = false;
    std::uint64_t _timesDropped = 0;
};

} // namespace EmbeddedHV
