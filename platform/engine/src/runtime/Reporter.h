#pragma once

#include <exception>
#include <mutex>
#include <string>

#include "ExecutionListener.h"
#include "JobError.h"
#include "runtime/Cancellation.h"

namespace EmbeddedHV {

/// Speaks to the listener of a job: one call at a time, whatever thread it comes from, and nothing
/// after the last callback. A listener that throws ends the job; its exception goes to the caller
/// of Execution::execute once everything is released.
class Reporter
{
public:
    Reporter(ExecutionListener& listener, Cancellation& cancellation);

    void init(const std::string& executionId);
    void message(const std::string& id, const std::string& text);
    /// Never goes back: a part below the one reported last is left out.
    void progress(double fraction);
    void success();
    void cancelled();
    void error(const JobError& error);
    /// The exception of the listener, if it threw.
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
};

} // namespace EmbeddedHV
