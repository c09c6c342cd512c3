#include "components/ComponentQueries.h"

#include "ErrorIds.h"
#include "JobError.h"
#include "duckdb/DuckFaults.h"
#include "duckdb/DuckSession.h"
#include "runtime/QueryWatch.h"

namespace EmbeddedHV {

void ComponentQueries::throwIfStopped() const
{
    // If the job was cancelled, it ends with onCancel whatever the error.
    if (_context.stopping())
        throw JobError(errors::kQueryFailed, {.step = _component, .what = "the job was stopped"});
}

void ComponentQueries::stream(const std::string& sql,
                              const std::function<void(duck::Chunk&)>& take) const
{
    throwIfStopped();
    const QueryWatch watch(connectionOf(_context.localSession()).handle(), *_context.cancellation,
                           [](double) {});
    try {
        duck::Prepared statement(connectionOf(_context.localSession()), sql);
        duck::Result rows = statement.stream();
        while (duck::Chunk chunk = duck::nextChunk(rows)) {
            throwIfStopped();
            take(chunk);
        }
    } catch (const duck::QueryError& error) {
        throw faultOf(duckFault(error.what()), _component, "the result of " + _component);
    }
}

duck::Result ComponentQueries::run(const std::string& sql) const
{
    throwIfStopped();
    const QueryWatch watch(connectionOf(_context.localSession()).handle(), *_context.cancellation,
                           [](double) {});
    try {
        return connectionOf(_context.localSession()).query(sql);
    } catch (const duck::QueryError& error) {
        throw faultOf(duckFault(error.what()), _component, "the result of " + _component);
    }
}

} // namespace EmbeddedHV
