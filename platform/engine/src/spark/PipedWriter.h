#pragma once

#include <exception>
#include <string>
#include <thread>

#include "runtime/Cancellation.h"
#include "spark/BatchPipe.h"
#include "spark/SparkSession.h"

namespace EmbeddedHV {

/// Writes the records of batches to a file or a table with a statement of the embedded database,
/// which runs on a thread of its own.
class PipedWriter
{
public:
    /// Borrows the session and the cancellation.
    PipedWriter(SparkSession& session, const Fields& fields, Cancellation& cancellation);
    PipedWriter(const PipedWriter&) = delete;
    PipedWriter& operator=(const PipedWriter&) = delete;
    /// Ends the statement, which then fails unless finish was called.
    ~PipedWriter();

    /// The SELECT of the records, for the statement.
    std::string select() const;
    /// Starts the statement. `purpose` says what the thread does, for messages. `session` runs the
    /// statement, and nothing else may use it until finish. Null: a session of its own.
    void start(std::string statement, const std::string& purpose, DuckSession* session = nullptr);
    /// Waits until the records are read. Throws what the statement throws.
    void put(const RecordBatch& batch);
    /// Waits for the end of the statement. Throws what the statement throws.
    void finish();

private:
    void write(const std::string& statement, DuckSession* session);
    void join();

    SparkSession& _session;
    Cancellation& _cancellation;
    BatchPipe _pipe;
    std::int64_t _id;
    std::thread _writer;
    std::exception_ptr _failure; ///< of the statement; valid after join
};

} // namespace EmbeddedHV
