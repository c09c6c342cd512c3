#include "spark/PipedWriter.h"

#include "datafile/StartedThread.h"
#include "runtime/RowSources.h"
#include "spark/SparkEngine.h"

namespace EmbeddedHV {

PipedWriter::PipedWriter(SparkSession& session, const Fields& fields, Cancellation& cancellation)
    : _session(session), _cancellation(cancellation), _pipe(fields),
      _id(session.rowSources().add(_pipe))
{
}

PipedWriter::~PipedWriter()
{
    _pipe.fail();
    join();
    _session.rowSources().remove(_id);
}

std::string PipedWriter::select() const
{
    return "SELECT * FROM " + RowSources::tableOf(_id);
}

void PipedWriter::start(std::string statement, const std::string& purpose, DuckSession* session)
{
    _writer = datafile::startedThread(
        purpose, [this, session, statement = std::move(statement)] { write(statement, session); });
}

/// Runs on its own thread while the cluster returns records.
void PipedWriter::write(const std::string& statement, DuckSession* session)
{
    const auto run = [&](DuckSession& writer) {
        writer.run(statement, _cancellation, [](double) {});
    };
    // A thread of the database that waits for another one uses a core meanwhile, and the cluster
    // may take minutes until it returns the first record.
    _pipe.awaitBegin();
    try {
        if (session) {
            run(*session);
        } else {
            DuckSession own(_session.engine().database());
            run(own);
        }
    } catch (...) {
        _failure = std::current_exception();
    }
    _pipe.closeReader();
}

void PipedWriter::join()
{
    if (_writer.joinable())
        _writer.join();
}

void PipedWriter::put(const RecordBatch& batch)
{
    if (_pipe.put(batch))
        return;
    join();
    if (_failure)
        std::rethrow_exception(_failure);
}

void PipedWriter::finish()
{
    _pipe.finish();
    join();
    if (_failure)
        std::rethrow_exception(_failure);
}

} // namespace EmbeddedHV
