#pragma once

#include <string>

#include "EngineExport.h"

namespace EmbeddedHV {

/// What a job tells its caller while it runs. The engine calls on threads of its choosing, one at a
/// time, and only during Execution::execute. The last callback is exactly one of onSuccess, onError
/// and onCancel.
class ENGINE_API ExecutionListener
{
public:
    /// The job was cancelled, from whichever side.
    virtual void onCancel() = 0;
    /// The job failed: an error id, one sentence for the user, and detail for the log.
    virtual void onError(const std::string& id, const std::string& text,
                         const std::string& detail) = 0;
    virtual void onInit(const std::string& executionId) = 0;
    virtual void onMessage(const std::string& text) = 0;
    /// The part of the work that is done, from 0 to 1.
    virtual void onProgress(float fraction) = 0;
    virtual void onSuccess() = 0;

protected:
    ~ExecutionListener() = default;
};

/// A listener that takes the id of a message as well. The engine asks for it by dynamic_cast and
/// then reports through this operation only.
class ENGINE_API ExtendedExecutionListener : public ExecutionListener
{
public:
    using ExecutionListener::onMessage;
    virtual void onMessage(const std::string& id, const std::string& text) = 0;
    virtual ~ExtendedExecutionListener() = default;
};

} // namespace EmbeddedHV
