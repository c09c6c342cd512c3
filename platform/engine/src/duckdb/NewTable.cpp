#include "duckdb/NewTable.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "ErrorIds.h"
#include "JobError.h"
#include "datafile/ColumnTypes.h"
#include "datafile/DuckFunctions.h"
#include "datafile/SqlQuoting.h"
#include "duckdb/DuckFaults.h"
#include "duckdb/DuckSession.h"

namespace EmbeddedHV {
namespace {

std::string definitionOf(const Fields& fields)
{
    std::string columns;
    for (const CFField& field : fields)
        columns += (columns.empty() ? "" : ", ") + quotedIdentifier(field.GetName()) + " " +
                   sqlTypeOf(field.GetStorage());
    return columns;
}

/// A chunk of numbered records, a column a series.
class NumberedChunk
{
public:
    explicit NumberedChunk(const std::vector<std::vector<double>>& columns) : _columns(columns)
    {
        const duck::LogicalType integer(DUCKDB_TYPE_BIGINT);
        const duck::LogicalType real(DUCKDB_TYPE_DOUBLE);
        std::vector<duckdb_logical_type> types(columns.size() + 1, real.get());
        types.front() = integer.get();
        _chunk = duck::Chunk(duckdb_create_data_chunk(types.data(), types.size()));
    }

    /// Calls `check` for each column.
    template <class Check>
    void fill(std::size_t first, std::size_t count, const Check& check)
    {
        duckdb_data_chunk_reset(_chunk.handle());
        auto* const numbers = static_cast<std::int64_t*>(duckdb_vector_get_data(_chunk.column(0)));
        std::iota(numbers, numbers + count, static_cast<std::int64_t>(first));
        for (std::size_t column = 0; column < _columns.size(); ++column) {
            check();
            fillColumn(_chunk.column(column + 1), _columns[column].data() + first, count);
        }
        duckdb_data_chunk_set_size(_chunk.handle(), count);
    }
    duckdb_data_chunk handle() const { return _chunk.handle(); }

private:
    static void fillColumn(duckdb_vector vector, const double* values, std::size_t count)
    {
        std::copy_n(values, count, static_cast<double*>(duckdb_vector_get_data(vector)));
        for (std::size_t row = 0; row < count; ++row)
            if (std::isnan(values[row]))
                duck::setMissing(vector, row);
    }

    const std::vector<std::vector<double>>& _columns;
    duck::Chunk _chunk;
};

} // namespace

NewTable::NewTable(JobContext& context, std::string step, Fields fields)
    : _context(context), _step(std::move(step)), _fields(std::move(fields)),
      _table(context.newTable("hv_made_"))
{
    try {
        connectionOf(_context.localSession())
            .query("CREATE TEMP TABLE " + quotedIdentifier(_table) + " (" + definitionOf(_fields) +
                   ")");
    } catch (const duck::QueryError& error) {
        throw faultOf(duckFault(error.what()), _step, "the result of " + _step);
    }
    const duckdb_state state = duckdb_appender_create(
        connectionOf(_context.localSession()).handle(), nullptr, _table.c_str(), &_appender);
    if (state != DuckDBSuccess) {
        const std::string reason = _appender ? duckdb_appender_error(_appender) : "";
        duckdb_appender_destroy(&_appender);
        throw faultOf(duckFault(reason), _step, "the result of " + _step);
    }
}

NewTable::~NewTable()
{
    duckdb_appender_destroy(&_appender);
}

void NewTable::check(duckdb_state state) const
{
    if (state == DuckDBSuccess)
        return;
    const char* const reason = duckdb_appender_error(_appender);
    throw faultOf(duckFault(reason ? reason : ""), _step, "the result of " + _step);
}

void NewTable::addMissing()
{
    check(duckdb_append_null(_appender));
}

void NewTable::addReal(double value)
{
    check(std::isnan(value) ? duckdb_append_null(_appender)
                            : duckdb_append_double(_appender, value));
}

void NewTable::addInteger(std::int64_t value)
{
    check(duckdb_append_int64(_appender, value));
}

void NewTable::addText(const std::string& value)
{
    check(duckdb_append_varchar_length(_appender, value.data(), value.size()));
}

void NewTable::addDate(std::int32_t days)
{
    check(duckdb_append_date(_appender, {days}));
}

void NewTable::addTime(std::int64_t microseconds)
{
    check(duckdb_append_time(_appender, {microseconds}));
}

void NewTable::addTimestamp(std::int64_t microseconds)
{
    check(duckdb_append_timestamp(_appender, {microseconds}));
}

void NewTable::throwIfStopped() const
{
    if (_context.stopping())
        throw JobError(errors::kQueryFailed, {.step = _step, .what = "the job was stopped"});
}

void NewTable::endRecord()
{
    throwIfStopped();
    check(duckdb_appender_end_row(_appender));
}

void NewTable::addNumbered(const std::vector<std::vector<double>>& columns,
                           const std::function<void(double)>& progress)
{
    const std::size_t records = columns.empty() ? 0 : columns.front().size();
    const std::size_t most = duckdb_vector_size();
    NumberedChunk chunk(columns);
    for (std::size_t first = 0; first < records; first += most) {
        const std::size_t count = std::min(most, records - first);
        chunk.fill(first, count, [this] { throwIfStopped(); });
        check(duckdb_append_data_chunk(_appender, chunk.handle()));
        progress(static_cast<double>(first + count) / static_cast<double>(records));
    }
}

NodePtr NewTable::finish()
{
    check(duckdb_appender_close(_appender));
    duckdb_appender_destroy(&_appender);
    return _context.localTable(std::move(_fields), _table);
}

} // namespace EmbeddedHV
