#pragma once

#include <functional>
#include <string>
#include <thread>

#include "runtime/Cancellation.h"
#include "spark/SparkClient.h"

namespace EmbeddedHV {

/// Watches one running statement from its own thread and interrupts it on the cluster when the job
/// should end. The cluster does not know a statement from its first moment, so the interrupt is
/// repeated.
class SparkWatch
{
public:
    /// Borrows the client and the cancellation.
    SparkWatch(SparkClient& client, std::string tag, Cancellation& cancellation);
    SparkWatch(const SparkWatch&) = delete;
    SparkWatch& operator=(const SparkWatch&) = delete;
    ~SparkWatch();

private:
    void run();

    SparkClient& _client;
    std::string _tag;
    Cancellation& _cancellation;
    bool _done = false;
    std::thread _thread;
};

} // namespace EmbeddedHV
