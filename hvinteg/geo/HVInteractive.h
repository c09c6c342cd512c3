#pragma once

#include <memory>
#include <string>
#include <vector>

#include "runner/HVProgressListener.h"
#include "support/HvintegExport.h"

class HVRunner;
class HVStatContainer;

/// What all objects behind a dialog or a viewer have in common: a runner of their own, and the
/// reasons of the last request's failure, to be read until the next request begins.
///
///     HVInteractiveSTEM maps;
///     if (!maps.validateShapeSource(path, model) && maps.hasError(id, text, detail))
///         show(text);
///
/// An object lives as long as its dialog and answers one request after another, each on the thread
/// that calls it, to the end. The runner has no procedure: nothing goes to the host's output, and
/// the host's interrupt does not stop a job; cancelExecution does.
///
/// Threads: requests may come from different threads, but one at a time. cancelExecution alone may
/// come from any thread, at any moment of the object's life. Errors: a request is false if a job
/// failed, or if its dataset or file cannot be opened; what is thrown elsewhere passes, and leaves
/// no execution and no Java reference behind.
class HVINTEG_EXPORT HVInteractive
{
public:
    /// The first object of the process starts the Java virtual machine if need be; what that throws
    /// passes.
    HVInteractive();
    HVInteractive(const HVInteractive&) = delete;
    HVInteractive& operator=(const HVInteractive&) = delete;
    virtual ~HVInteractive();

    /// Runs the prepared job of a runner. False for one that failed, that the engine threw at, or
    /// that was refused because the object was cancelled before; true for one that was cancelled on
    /// the way.
    bool tryRunHV(HVRunner& runner);
    /// The data model of a job's output, without running it. False if the engine has none.
    bool tryGetMetadata(HVRunner& runner, const std::string& jobText,
                        const HVStatContainer& container, std::string& result);

    /// Makes the calling thread the one whose Java environment is used. Every request begins so.
    void resetJNI();
    /// Releases the Java references of the process, and ends the execution of the last job.
    void cleanJRef();
    void cleanExecution();
    /// Stops the job that is running, if there is one, and refuses all that come after it: a dialog
    /// that was cancelled is not asked again. Any thread, at any moment between constructor and
    /// destructor; see HVRunner::cancelExecution.
    void cancelExecution();
    /// Whether the object was cancelled.
    bool isStopProcessor();

    /// What is known of the last job.
    std::string getExecutionId() const;
    HVProgressListener::ExecutionState getState() const;
    /// Why the last request failed: what the job reported or, where it reported nothing, what was
    /// thrown or found. Then only `errorText` is set. False, and nothing is set, if there is no
    /// reason to tell.
    bool hasError(std::string& errorId, std::string& errorText, std::string& errorDetail);
    /// The messages of the last job, or the object's own once it has some. Good until the next
    /// request.
    const std::vector<std::string>& getMessages() const;

protected:
    /// The beginning of every request: takes over the thread, and forgets the messages of the last
    /// one and why it failed, be it told by a job or not. A request that fails before its first job would give the reason
    /// of an earlier one otherwise.
    void beginRequest();

    /// The object's own messages stand in for those of the job until they are cleaned.
    void AddMessage(const std::string& text);
    /// Takes over the messages of the last job, which the next one forgets.
    void UpdateMessageList();
    void CleanMessages();
    /// Forgets the reason of the last failure that the job did not report.
    void CleanExceptions();

    HVRunner& runner() const { return *_runner; }
    /// From the host's encoding, as it was when the object was made, to UTF-8.
    void* converter() const { return _converter.get(); }
    /// The reason that hasError gives where the job reported none; in the host's words.
    void setException(const std::string& text) { _exceptionText = text; }
    /// The host's text of a message, as the reason.
    void setTranslatedException(const char* message);
    /// Puts the host's text of a message in the place of a reason that says nothing.
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
