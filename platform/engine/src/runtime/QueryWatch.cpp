#include "runtime/QueryWatch.h"

#include <algorithm>
#include <chrono>

#include "datafile/StartedThread.h"
#include "runtime/ThreadBorder.h"

namespace EmbeddedHV {
namespace {

constexpr auto kProgressInterval = std::chrono::milliseconds(200);
constexpr auto kInterruptInterval = std::chrono::milliseconds(5);

} // namespace

QueryWatch::QueryWatch(duckdb_connection connection, Cancellation& cancellation,
                       std::function<void(double)> progress)
    : _connection(connection), _cancellation(cancellation), _progress(std::move(progress)),
      _thread(datafile::startedThread("watches the query", [this] { run(); }))
{
    border::handOver(&_cancellation);
}

QueryWatch::~QueryWatch()
{
    _cancellation.wake([this] { _done = true; });
    _thread.join();
    border::takeOver(&_cancellation);
}

void QueryWatch::run()
{
    bool done = false;
    while (!done) {
        if (_cancellation.stopping()) {
            duckdb_interrupt(_connection);
            // While the job is stopping, wait returns at once.
            std::this_thread::sleep_for(kInterruptInterval);
        }
        _cancellation.wait(kProgressInterval, [&] { return _done; });
        _cancellation.wake([&] { done = _done; });
        if (!done && !_cancellation.stopping())
            reportProgress();
    }
}

void QueryWatch::reportProgress()
{
    const auto state = duckdb_query_progress(_connection);
    _progress(std::max(state.percentage, 0.0) / 100.0);
}

} // namespace EmbeddedHV
