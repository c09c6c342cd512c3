#pragma once

#include <memory>
#include <string>
#include <vector>

#include "runner/HVProgressListener.h"
#include "support/HvintegExport.h"

class HVRunner;
class HVStatContainer;

/// Base of the objects behind dialogs and viewers. Each has its own runner and keeps the reasons
/// why the last request failed until the next request begins.
///
///     HVInteractiveSTEM maps;
///     if (!maps.validateShapeSource(path, model) && maps.hasError(id, text, detail))
///         show(text);
///     else if (model.empty())
///         show("The engine could not read the map.");
///
/// An object lives as long as its dialog. It handles one request after another, each completely on
/// the calling thread. Its runner has no procedure: nothing goes to the host's output, and the
/// host's interrupt does not stop a job; cancelExecution does.
///
/// Threads: requests may come from different threads, but one at a time. Only cancelExecution may
/// be called from any thread at any time.
///
/// Errors: a request returns false if a job fails, or if its dataset or file cannot be opened.
/// Other exceptions are passed on; the execution and the Java references are released first.
class HVINTEG_EXPORT HVInteractive
{
public:
    /// Creates the runner. The first object of the process starts the Java virtual machine if
    /// necessary and passes on what that throws.
    HVInteractive();
    HVInteractive(const HVInteractive&) = delete;
    HVInteractive& operator=(const HVInteractive&) = delete;
    /// Ends the runner as HVRunner's destructor describes.
    virtual ~HVInteractive();

    /// Runs the prepared job of a runner. Returns false if the job fails, the engine throws, or the
    /// object was cancelled before. Returns true for a job that is cancelled while it runs.
    bool tryRunHV(HVRunner& runner);
    /// Asks for the data model of a job's output without running the job. Returns false if the
    /// engine has none. If the engine throws, `result` is empty, the return value is true, and
    /// hasError has no reason: only the empty text shows the failure.
    bool tryGetMetadata(HVRunner& runner, const std::string& jobText,
                        const HVStatContainer& container, std::string& result);

    /// Makes the calling thread the one whose Java environment is used. Every request starts with
    /// this.
    void resetJNI();
    /// Releases all Java references that the object manager of the process holds.
    void cleanJRef();
    /// Ends the execution of the last job, if there is one.
    void cleanExecution();
    /// Stops the running job, if there is one, and refuses all later jobs: a cancelled dialog makes
    /// no more requests. May be called from any thread, at any time between constructor and
    /// destructor. See HVRunner::cancelExecution.
    void cancelExecution();
    /// Whether the object is cancelled. Any thread.
    bool isStopProcessor();

    /// The engine's id of the last job.
    std::string getExecutionId() const;
    /// The state of the last job.
    HVProgressListener::ExecutionState getState() const;
    /// Returns why the last request failed: what the job reported or, if it reported nothing, the
    /// exception or problem that was found. In the second case only `errorText` is set. Returns
    /// false, and sets nothing, if there is no reason.
    bool hasError(std::string& errorId, std::string& errorText, std::string& errorDetail);
    /// The object's own messages if it has any, otherwise those of the last job. Valid until the
    /// next request.
    const std::vector<std::string>& getMessages() const;
    /// The detail of a message of the last job; see HVRunner::getMessageDetail.
    std::string getMessageDetail(const std::string& text) const;

protected:
    /// Starts a request: takes over the thread and clears the messages and failure reasons of the
    /// last one. Otherwise a request that fails before its first job would report an earlier
    /// reason.
    void beginRequest();

    /// Adds a message. Until CleanMessages, the object's own messages replace those of the job.
    void AddMessage(const std::string& text);
    /// Copies the messages of the last job, because the next job clears them.
    void UpdateMessageList();
    /// Removes the object's own messages.
    void CleanMessages();
    /// Clears the reason of the last failure that no job reported.
    void CleanExceptions();

    /// The runner of all requests. Owned by this object.
    HVRunner& runner() const { return *_runner; }
    /// Converts from the host's encoding at construction to UTF-8. Owned by this object.
    void* converter() const { return _converter.get(); }
    /// Sets the reason that hasError returns if the job reported none; in the host's language.
    void setException(const std::string& text) { _exceptionText = text; }
    /// Sets the host's translation of a message as the reason.
    void setTranslatedException(const char* message);
    /// Replaces a reason that says nothing by the host's translation of a message.
    void explainUnknown(const char* message);

private:
    /// The host hands its converter out as a plain pointer.
    struct ConverterDeleter
    {
        void operator()(void* converter) const;
    };

    std::unique_ptr<HVRunner> _runner;
    std::unique_ptr<void, ConverterDeleter> _converter;
    bool _hasOwnMessages = false;
    std::vector<std::string> _messages;
    std::string _exceptionText;
};
