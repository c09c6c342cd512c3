#include "components/ComponentQueries.h"

#include "ErrorIds.h"
#include "JobError.h"
#include "runtime/QueryFaults.h"
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
    const QueryWatch watch(_context.connection->handle(), *_context.cancellation, [](double) {});
    try {
        duck::Prepared statement(*_context.connection, sql);
        duck::Result rows = statement.stream();
        while (duck::Chunk chunk = duck::nextChunk(rows)) {
            throwIfStopped();
            take(chunk);
        }
    } catch (const duck::QueryError& error) {
        throw faultOf(error.what(), _component, "the result of " + _component);
    }
}

duck::Result ComponentQueries::run(const std::string& sql) const
{
    throwIfStopped();
    const QueryWatch watch(_context.connection->handle(), *_context.cancellation, [](double) {});
    try {
        return _context.connection->query(sql);
    } catch (const duck::QueryError& error) {
        throw faultOf(error.what(), _component, "the result of " + _component);
    }
}

} // namespace EmbeddedHV
