#pragma once

#include <functional>
#include <thread>

#include "runtime/Cancellation.h"

namespace EmbeddedHV {

/// Watches one running call from its own thread and interrupts it when the job should end. The
/// cluster does not know a statement from its first moment, so the interrupt is repeated.
class SparkWatch
{
public:
    /// Borrows the cancellation. `interrupt` is called on the watch's thread. Its exceptions are
    /// ignored: a lost connection ends the call as well.
    SparkWatch(std::function<void()> interrupt, Cancellation& cancellation);
    SparkWatch(const SparkWatch&) = delete;
    SparkWatch& operator=(const SparkWatch&) = delete;
    ~SparkWatch();

private:
    void run();

    std::function<void()> _interrupt;
    Cancellation& _cancellation;
    bool _done = false;
    std::thread _thread;
};

} // namespace EmbeddedHV
