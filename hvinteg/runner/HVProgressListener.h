#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "runner/HVStatExeListener.h"
#include "support/HvintegExport.h"

class TnProcedure;

/// Records the state, error, id and messages of a job. Forwards progress to the host and shows the
/// messages in the host's output after the job.
///
/// The engine calls it on its own threads during HVRunner::execute. Read the results after execute
/// has returned. There is no lock.
class HVINTEG_EXPORT HVProgressListener : public HVStatExeListener
{
public:
    /// State of a job. Callers store the numbers.
    enum ExecutionState : std::int32_t
    {
        NotStarted = 0, ///< no report of the engine yet
        Running = 1,    ///< a message or progress was reported
        Succeeded = 2,  ///< onSuccess was called
        Failed = 3,     ///< onError was called
        Cancelled = 4   ///< onCancel was called
    };

    /// The procedure receives the output. It is borrowed and may be null.
    explicit HVProgressListener(TnProcedure* procedure = nullptr);
    HVProgressListener(const HVProgressListener&) = delete;
    HVProgressListener& operator=(const HVProgressListener&) = delete;

    /// Sets the state to Cancelled. Of onCancel, onError and onSuccess the last call decides.
    void onCancel() override;
    /// Sets the state to Failed and stores the error.
    void onError(const std::string& id, const std::string& text,
                 const std::string& detail) override;
    /// Stores the engine's id of the job.
    void onInit(const std::string& executionId) override;
    /// Does nothing: only messages with an id are stored.
    void onMessage(const std::string& text) override;
    /// Sets the state to Running. With a procedure, passes the fraction to the host at once and
    /// unchanged.
    void onProgress(float fraction) override;
    /// Sets the state to Succeeded.
    void onSuccess() override;
    /// Sets the state to Running. Stores the text, unless the id is empty or one of those without
    /// information for the user.
    void onMessage(const std::string& id, const std::string& text) override;
    ~HVProgressListener() override;

    /// Clears all records of the last job.
    void reset();

    /// The state of the job.
    ExecutionState getState() const { return _state; }
    /// The engine's id of the job, which is also in the engine's log; empty before onInit.
    std::string getExecutionId() const { return _executionId; }
    /// The texts in order of arrival, including repetitions. Valid until the next job.
    const std::vector<std::string>& getMessages() const { return _messages; }
    /// Returns true if the job failed, with the error id, the sentence for the user and the detail.
    /// Otherwise the arguments are unchanged.
    bool hasError(std::string& id, std::string& text, std::string& detail);

    /// Shows each distinct message once, as a warning line. Then shows the error if `showError` is
    /// true, or that the run was cancelled. With `splitLabel`, if the data are split, lines begin
    /// with the current split group. Does nothing without a procedure.
    void displayAllMessages(bool showError, bool splitLabel);

private:
    HVINTEG_HIDDEN void displayMessages(bool labelled) const;
    HVINTEG_HIDDEN void displayEnd(bool showError, bool labelled) const;

    ExecutionState _state = NotStarted;
    std::string _errorId;
    std::string _errorText;
    std::string _errorDetail;
    std::string _executionId;
    std::vector<std::string> _messages;
    TnProcedure* _procedure;
    // The record that the host receives with each progress call; null without a procedure.
    std::unique_ptr<double> _progressValue;
};
