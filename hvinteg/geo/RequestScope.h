#pragma once

#include "geo/HVInteractive.h"

/// Ends a request on every way out: the Java references and the execution of its jobs go, before
/// the files and rows that the request made ahead of this object. Where nothing has failed, the
/// request has called end by then, and has heard what the engine threw at that.
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
        } catch (...) { // NOLINT(bugprone-empty-catch): what came before is on its way already
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
