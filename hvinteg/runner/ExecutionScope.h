#pragma once

#include "runner/HVRunner.h"

/// Ends the runner's execution on every exit from a scope that owns containers and iterators of
/// that execution. A successful scope ends it explicitly, so that exceptions of the engine reach
/// the caller.
class ExecutionScope
{
public:
    explicit ExecutionScope(HVRunner& runner) : _runner(runner) {}
    ~ExecutionScope()
    {
        try {
            _runner.cleanExecution();
        } catch (...) { // NOLINT(bugprone-empty-catch): an exception may be in flight
        }
    }
    ExecutionScope(const ExecutionScope&) = delete;
    ExecutionScope& operator=(const ExecutionScope&) = delete;

private:
    HVRunner& _runner;
};
