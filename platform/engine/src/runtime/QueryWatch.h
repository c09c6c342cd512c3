#pragma once

#include <duckdb.h>

#include <functional>
#include <thread>

#include "runtime/Cancellation.h"

namespace EmbeddedHV {

/// Watches one running statement from its own thread. Reports progress a few times a second and
/// interrupts the statement when the job should end. The database forgets an interrupt that comes
/// before the statement has begun, so the watch repeats it until it ends.
///
/// For the thread sanitizer, calls of the statement into our code are ordered through the job's
/// cancellation: after the thread that makes the watch, and before the thread that ends it.
class QueryWatch
{
public:
    /// `progress` receives the finished fraction of the statement, 0 to 1, on the watch's thread.
    QueryWatch(duckdb_connection connection, Cancellation& cancellation,
               std::function<void(double)> progress);
    QueryWatch(const QueryWatch&) = delete;
    QueryWatch& operator=(const QueryWatch&) = delete;
    ~QueryWatch();

private:
    void run();
    void reportProgress();

    duckdb_connection _connection;
    Cancellation& _cancellation;
    std::function<void(double)> _progress;
    bool _done = false;
    std::thread _thread;
};

} // namespace EmbeddedHV
