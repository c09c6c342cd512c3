#pragma once

#include <memory>
#include <string>
#include <vector>

#include "datafile/Duck.h"

/// The storage of texts in the table.
enum class CaseTableText
{
    Utf8, ///< as texts that SQL can work with
    Bytes ///< unchanged bytes, in any encoding
};

/// A table of cases in the host's database, filled case by case and removed by the destructor. A
/// large one moves to disk. Numbers are stored unchanged, the system-missing one as a missing
/// value. Throws ErrorText.
class CaseTable
{
public:
    /// One width per column: 0 for a number, above 0 for a text.
    CaseTable(const std::vector<int>& widths, CaseTableText text);
    ~CaseTable();
    CaseTable(const CaseTable&) = delete;
    CaseTable& operator=(const CaseTable&) = delete;

    /// Set each value of a case, then call endCase.
    void setNumber(std::size_t column, double value);
    void setText(std::size_t column, std::string_view text);
    void endCase();
    /// Call it after the last case.
    void finish();

    /// The FROM item.
    const std::string& name() const { return _name; }
    /// The name of a column.
    static std::string columnName(std::size_t column) { return "c" + std::to_string(column); }
    datafile::duck::Connection& connection() { return *_connection; }

private:
    void flush();
    [[noreturn]] static void fail(const std::string& reason);

    std::unique_ptr<datafile::duck::Connection> _connection;
    std::string _name;
    duckdb_appender _appender = nullptr;
    datafile::duck::Chunk _chunk;
    duckdb_data_chunk _raw = nullptr; ///< owned by `_chunk`
    std::vector<duckdb_vector> _vectors;
    std::size_t _row = 0;
};
