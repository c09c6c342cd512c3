#include "spark/SparkWatch.h"

#include <chrono>
#include <exception>
#include <utility>

#include "datafile/StartedThread.h"

namespace EmbeddedHV {
namespace {

constexpr auto kLookInterval = std::chrono::milliseconds(200);
constexpr auto kInterruptInterval = std::chrono::milliseconds(100);

} // namespace

SparkWatch::SparkWatch(std::function<void()> interrupt, Cancellation& cancellation)
    : _interrupt(std::move(interrupt)), _cancellation(cancellation),
      _thread(datafile::startedThread("watches the cluster's statement", [this] { run(); }))
{
}

SparkWatch::~SparkWatch()
{
    _cancellation.wake([this] { _done = true; });
    _thread.join();
}

void SparkWatch::run()
{
    bool done = false;
    while (!done) {
        if (_cancellation.stopping()) {
            try {
                _interrupt();
            } catch (const std::exception&) {
                // It is tried again.
            }
            // While the job is stopping, wait returns at once.
            std::this_thread::sleep_for(kInterruptInterval);
        }
        _cancellation.wait(kLookInterval, [this] { return _done; });
        _cancellation.wake([&] { done = _done; });
    }
}

} // namespace EmbeddedHV
