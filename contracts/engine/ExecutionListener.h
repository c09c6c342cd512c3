#pragma once

#include <string>

#include "EngineExport.h"

namespace EmbeddedHV {

/// Receives the reports of a running job. The engine calls it only during Execution::execute, on
/// any thread, but never on two threads at once. The last call is exactly one of onSuccess, onError
/// and onCancel. All texts are UTF-8.
///
/// If a callback throws, the embedded engine cancels the job, makes no more callbacks, and throws
/// the exception out of Execution::execute.
class ENGINE_API ExecutionListener
{
public:
    /// The job was cancelled, by the caller or by the engine.
    virtual void onCancel() = 0;
    /// The job failed. `id` identifies the error, `text` is one sentence for the user, and `detail`
    /// is for the log and for host programs. The embedded engine's detail is a JSON object with the
    /// parts of the error; docs/contracts.md describes it. Another engine may report any text.
    virtual void onError(const std::string& id, const std::string& text,
                         const std::string& detail) = 0;
    /// The job begins. `executionId` identifies the job.
    virtual void onInit(const std::string& executionId) = 0;
    /// A message for the user. The job continues.
    virtual void onMessage(const std::string& text) = 0;
    /// The fraction of the work that is done, from 0 to 1. It never decreases within a job.
    virtual void onProgress(float fraction) = 0;
    /// The job succeeded. Its outputs are complete.
    virtual void onSuccess() = 0;

protected:
    /// Protected: the engine does not delete a listener.
    ~ExecutionListener() = default;
};

/// A listener that also receives the id of each message. The engine detects it with dynamic_cast
/// and then calls only this overload of onMessage.
class ENGINE_API ExtendedExecutionListener : public ExecutionListener
{
public:
    using ExecutionListener::onMessage;
    /// A message for the user, with the id of its kind. The job continues.
    virtual void onMessage(const std::string& id, const std::string& text) = 0;
    /// The owner of the listener deletes it.
    virtual ~ExtendedExecutionListener() = default;
};

} // namespace EmbeddedHV
