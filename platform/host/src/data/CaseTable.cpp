#include "data/CaseTable.h"

#include <atomic>

#include "ErrorText.h"
#include "VexaCases.h"
#include "data/HostDatabase.h"

namespace {

namespace duck = datafile::duck;

/// All stores share one database, so the names must be unique.
std::string newName()
{
    static std::atomic<unsigned> last = 0;
    return "hv_cases_" + std::to_string(++last);
}

} // namespace

void CaseTable::fail(const std::string& reason)
{
    throw ErrorText("the cases cannot be kept: " + reason.substr(0, reason.find('\n')));
}

CaseTable::CaseTable(const std::vector<int>& widths, CaseTableText text)
    : _connection(connectToHostDatabase(widths.size())), _name(newName())
{
    const char* textType = text == CaseTableText::Utf8 ? "VARCHAR" : "BLOB";
    std::string sql = "CREATE TABLE " + _name + " (";
    std::vector<duckdb_logical_type> types;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        const bool isText = widths[i] > 0;
        sql += (i == 0 ? "" : ", ") + columnName(i) + " " + (isText ? textType : "DOUBLE");
        types.push_back(duckdb_create_logical_type(
            !isText ? DUCKDB_TYPE_DOUBLE
                    : (text == CaseTableText::Utf8 ? DUCKDB_TYPE_VARCHAR : DUCKDB_TYPE_BLOB)));
    }
    _raw = duckdb_create_data_chunk(types.data(), types.size());
    _chunk = duck::Chunk(_raw);
    for (duckdb_logical_type& type : types)
        duckdb_destroy_logical_type(&type);
    for (std::size_t i = 0; i < widths.size(); ++i) {
        _vectors.push_back(duckdb_data_chunk_get_vector(_raw, i));
        duckdb_vector_ensure_validity_writable(_vectors.back());
    }
    try {
        _connection->query(sql + ")");
    } catch (const duck::QueryError& error) {
        fail(error.what());
    }
    if (duckdb_appender_create(_connection->handle(), nullptr, _name.c_str(), &_appender) !=
        DuckDBSuccess)
        fail("the table takes no cases");
}

CaseTable::~CaseTable()
{
    duckdb_appender_destroy(&_appender);
    try {
        _connection->query("DROP TABLE " + _name);
    } catch (const std::exception&) {
        // It is released with the process.
        return;
    }
}

void CaseTable::setNumber(std::size_t column, double value)
{
    if (value == kSystemMissing)
        duckdb_validity_set_row_invalid(duckdb_vector_get_validity(_vectors[column]), _row);
    else
        static_cast<double*>(duckdb_vector_get_data(_vectors[column]))[_row] = value;
}

void CaseTable::setText(std::size_t column, std::string_view text)
{
    duckdb_vector_assign_string_element_len(_vectors[column], _row, text.data(), text.size());
}

void CaseTable::endCase()
{
    if (++_row == duckdb_vector_size())
        flush();
}

void CaseTable::flush()
{
    if (_row == 0)
        return;
    duckdb_data_chunk_set_size(_raw, _row);
    // Reset the row, so that a caller that continues after a failure does not write beyond the end.
    _row = 0;
    if (duckdb_append_data_chunk(_appender, _raw) != DuckDBSuccess) {
        const char* text = duckdb_appender_error(_appender);
        fail(text ? text : "the table takes no more");
    }
    // A reset also removes the space for missing marks.
    duckdb_data_chunk_reset(_raw);
    for (duckdb_vector vector : _vectors)
        duckdb_vector_ensure_validity_writable(vector);
}

void CaseTable::finish()
{
    flush();
    if (duckdb_appender_close(_appender) != DuckDBSuccess) {
        const char* text = duckdb_appender_error(_appender);
        fail(text ? text : "the table takes no more");
    }
}
