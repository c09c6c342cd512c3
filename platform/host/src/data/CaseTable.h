#pragma once

#include <memory>
#include <string>
#include <vector>

#include "datafile/Duck.h"

/// How the texts of a table stand in it.
enum class CaseTableText
{
    Utf8, ///< as texts that SQL can work with
    Bytes ///< as they are, in any encoding
};

/// A table of cases in the host's database, filled case by case and gone with the object. Large
/// ones move to the disk. Numbers stand as they are, the system-missing one as no value. Throws
/// ErrorText.
class CaseTable
{
public:
    /// `widths` gives a column each: 0 for a number, above 0 for a text.
    CaseTable(const std::vector<int>& widths, CaseTableText text);
    ~CaseTable();
    CaseTable(const CaseTable&) = delete;
    CaseTable& operator=(const CaseTable&) = delete;

    /// Set each value of a case, then end the case.
    void setNumber(std::size_t column, double value);
    void setText(std::size_t column, std::string_view text);
    void endCase();
    /// After the last case.
    void finish();

    /// The FROM item, and the name of a column.
    const std::string& name() const { return _name; }
    static std::string columnName(std::size_t column) { return "c" + std::to_string(column); }
    datafile::duck::Connection& connection() { return *_connection; }

private:
    void flush();
    [[noreturn]] static void fail(const std::string& reason);

    std::unique_ptr<datafile::duck::Connection> _connection;
    std::string _name;
    duckdb_appender _appender = nullptr;
    datafile::duck::Chunk _chunk;
    duckdb_data_chunk _raw = nullptr; ///< what `_chunk` owns
    std::vector<duckdb_vector> _vectors;
    std::size_t _row = 0;
};
