#pragma once

#include "runner/HVRunner.h"

/// Ends the runner's execution on every way out of a scope whose containers and iterators the
/// execution knows. Where nothing has failed, the scope's owner has ended it by then, and has heard
/// what the engine threw at that.
class ExecutionScope
{
public:
    explicit ExecutionScope(HVRunner& runner) : _runner(runner) {}
    ~ExecutionScope()
    {
        try {
            _runner.cleanExecution();
        } catch (...) { // NOLINT(bugprone-empty-catch): what came before is on its way already
        }
    }
    ExecutionScope(const ExecutionScope&) = delete;
    ExecutionScope& operator=(const ExecutionScope&) = delete;

private:
    HVRunner& _runner;
};
