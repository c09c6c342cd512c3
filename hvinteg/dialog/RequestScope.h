#pragma once

#include "dialog/HVInteractive.h"

/// Ends a request on every exit: releases the Java references and the execution before the files
/// and rows that were created earlier. A successful request calls end itself, so that exceptions of
/// the engine reach the caller.
class RequestScope
{
public:
    explicit RequestScope(HVInteractive& object) : _object(object) {}
    ~RequestScope()
    {
        if (_hasEnded)
            return;
        try {
            end();
        } catch (...) { // NOLINT(bugprone-empty-catch): an exception may be in flight
        }
    }
    RequestScope(const RequestScope&) = delete;
    RequestScope& operator=(const RequestScope&) = delete;

    void end()
    {
        _hasEnded = true;
        _object.cleanJRef();
        _object.cleanExecution();
    }

private:
    HVInteractive& _object;
    bool _hasEnded = false;
};
