#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "runner/HVStatExeListener.h"
#include "support/HvintegExport.h"

class TnProcedure;

/// Records what a job tells: its state, its error, its id and its messages. It forwards progress to
/// the host and, after the job, puts the messages into the host's output.
///
/// The engine calls it on threads of its own during HVRunner::execute; everything is read after
/// execute has returned. There is no lock.
class HVINTEG_EXPORT HVProgressListener : public HVStatExeListener
{
public:
    /// How far a job is, or how it ended. Callers store the numbers.
    enum ExecutionState : std::int32_t
    {
        NotStarted = 0,
        Running = 1,
        Succeeded = 2,
        Failed = 3,
        Cancelled = 4
    };

    /// The procedure is borrowed and says where output goes; null for none.
    explicit HVProgressListener(TnProcedure* procedure = nullptr);
    HVProgressListener(const HVProgressListener&) = delete;
    HVProgressListener& operator=(const HVProgressListener&) = delete;

    /// Each of the three ends a job; the last call decides the state.
    void onCancel() override;
    void onError(const std::string& id, const std::string& text,
                 const std::string& detail) override;
    void onInit(const std::string& executionId) override;
    /// Has no effect: a message counts only with its id.
    void onMessage(const std::string& text) override;
    /// Hands the fraction to the host as it comes, neither scaled nor limited in rate.
    void onProgress(float fraction) override;
    void onSuccess() override;
    /// Keeps the text, unless the id is empty or one of those that say nothing to the user.
    void onMessage(const std::string& id, const std::string& text) override;
    ~HVProgressListener() override;

    /// Forgets the last job.
    void reset();

    /// The state, and the engine's id of the job, which its log has, too.
    ExecutionState getState() const { return _state; }
    std::string getExecutionId() const { return _executionId; }
    /// The texts in order of arrival, repetitions included.
    const std::vector<std::string>& getMessages() const { return _messages; }
    /// True if the job failed, and then its error id, the sentence for the user and the detail; the
    /// arguments stay as they are otherwise.
    bool hasError(std::string& id, std::string& text, std::string& detail);

    /// Shows each distinct message once, as a warning line, then the error if `showError` is set,
    /// or that the run was cancelled. `splitLabel` has lines begin with the present split group,
    /// where the data are split. Without a procedure nothing is shown.
    void displayAllMessages(bool showError, bool splitLabel);

private:
    void displayMessages(bool labelled) const;
    void displayEnd(bool showError, bool labelled) const;

    ExecutionState _state = NotStarted;
    std::string _errorId;
    std::string _errorText;
    std::string _errorDetail;
    std::string _executionId;
    std::vector<std::string> _messages;
    TnProcedure* _procedure;
    // The record that the host gets with each progress call; null without a procedure.
    std::unique_ptr<double> _progressValue;
};
