#include "steps/NewTable.h"

#include <cmath>

#include "ErrorIds.h"
#include "JobError.h"
#include "datafile/ColumnTypes.h"
#include "datafile/SqlQuoting.h"
#include "runtime/QueryFaults.h"

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

} // namespace

NewTable::NewTable(JobContext& context, std::string step, Fields fields)
    : _context(context), _step(std::move(step)), _fields(std::move(fields)),
      _table(context.newTable("hv_made_"))
{
    try {
        _context.connection->query("CREATE TEMP TABLE " + quotedIdentifier(_table) + " (" +
                                   definitionOf(_fields) + ")");
    } catch (const duck::QueryError& error) {
        throw faultOf(error.what(), _step, "the result of " + _step);
    }
    const duckdb_state state =
        duckdb_appender_create(_context.connection->handle(), nullptr, _table.c_str(), &_appender);
    if (state != DuckDBSuccess) {
        const std::string reason = _appender ? duckdb_appender_error(_appender) : "";
        duckdb_appender_destroy(&_appender);
        throw faultOf(reason, _step, "the result of " + _step);
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
    throw faultOf(reason ? reason : "", _step, "the result of " + _step);
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

void NewTable::endRecord()
{
    if (_context.stopping())
        throw JobError(errors::kQueryFailed, {.step = _step, .what = "the job was stopped"});
    check(duckdb_appender_end_row(_appender));
}

NodePtr NewTable::finish()
{
    check(duckdb_appender_close(_appender));
    duckdb_appender_destroy(&_appender);
    return tableNode(std::move(_fields), _table);
}

} // namespace EmbeddedHV
