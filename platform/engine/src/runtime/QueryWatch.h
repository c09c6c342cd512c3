#pragma once

#include <duckdb.h>

#include <functional>
#include <thread>

#include "runtime/Cancellation.h"

namespace EmbeddedHV {

/// Watches one running statement from a thread of its own: reports its progress a few times a
/// second and interrupts it when the job is to end. An interrupt that comes before the statement
/// has begun is forgotten by the database, so it is repeated until the watch ends.
///
/// The calls of the statement into our code take over at the job's cancellation from the thread
/// that makes the watch, and hand over there to the thread that ends it.
class QueryWatch
{
public:
    /// `progress` receives the part of the statement that is done, 0 to 1, on the watch's thread.
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
