#pragma once

#include <exception>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "Execution.h"
#include "ExecutionListener.h"
#include "JobError.h"
#include "runtime/Cancellation.h"

namespace EmbeddedHV {

/// Calls the listener of a job, on one thread at a time, and never after the last callback. A
/// listener that throws ends the job. The caller of Execution::execute gets the exception after
/// everything is released.
class Reporter
{
public:
    Reporter(ExecutionListener& listener, Cancellation& cancellation);

    void init(const std::string& executionId);
    /// Reports the sentence of the parts.
    void message(const std::string& id, const FaultParts& parts);
    /// The details of the messages that were reported, in their order.
    std::vector<ReportedMessage> takeMessages() { return std::move(_messages); }
    /// Never decreases: smaller fractions are dropped.
    void progress(double fraction);
    void success();
    void cancelled();
    void error(const JobError& error);
    /// Throws the exception of the listener, if there was one.
    void rethrow() const;

private:
    template <class Call>
    void call(Call callback);

    ExecutionListener& _listener;
    ExtendedExecutionListener* _extended;
    Cancellation& _cancellation;
    std::mutex _mutex;
    double _reported = 0;
    std::exception_ptr _thrown;
    std::vector<ReportedMessage> _messages;
};

} // namespace EmbeddedHV
