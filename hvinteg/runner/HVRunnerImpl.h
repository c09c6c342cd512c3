#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Execution.h"
#include "MetadataService.h"
#include "runner/CancellableExecution.h"
#include "runner/RunnerRegistration.h"

class HVProgressListener;
class HVStatContainer;
class HVStatDataIterator;

namespace EmbeddedHV {
class RowDataIterator;
}

/// The part of HVRunner that works with the engine: one execution at a time. HVRunner forwards to
/// it.
class HVRunnerImpl
{
public:
    /// The listener is borrowed. Passes on what the start of the Java virtual machine throws.
    HVRunnerImpl(HVProgressListener* listener, bool hasProcedure);
    ~HVRunnerImpl();
    HVRunnerImpl(const HVRunnerImpl&) = delete;
    HVRunnerImpl& operator=(const HVRunnerImpl&) = delete;

    /// Ends the present execution, then creates the next one. If the engine refuses the text, the
    /// new execution remains, closed to cancels, until cleanExecution disposes it.
    void prepareHVLJob(const std::string& jobText);
    /// The next five require a prepared execution. That is not checked.
    void addInputContainer(HVStatContainer* container);
    void addOutputContainer(HVStatContainer* container);
    void addInputIterator(HVStatDataIterator* iterator);
    bool execute();
    /// The detail of a message of the last executed job, or empty.
    std::string messageDetail(const std::string& text) const;
    /// Any thread, at any time before endCancels. See CancellableExecution::cancel.
    void cancelExecution();
    /// Waits for cancels on other threads. The owner calls it before the destructor.
    void endCancels() { _execution.close(); }
    /// Disposes and deletes the execution. Waits for a cancel on another thread. Deletes it even if
    /// the engine throws in dispose.
    void cleanExecution();
    /// Returns null if the engine throws.
    EmbeddedHV::RowDataIterator* getOutputIterator(const std::string& fileName);
    /// Ends the present execution first. If the engine throws, also at that end, `metadata` is
    /// empty and the result is true.
    bool getMetadata(const std::string& jobText, const HVStatContainer& container,
                     std::string& metadata);

    /// Ends the present execution, then asks the engine. Returns false if either throws.
    bool askService(const std::function<void(EmbeddedHV::MetadataService&, JNIEnv*)>& question);

    bool isStopProcessor() const { return _execution.isStopped(); }
    /// Has no effect without a procedure: a cancelled dialog stays cancelled.
    void clearStop();
    /// Reads the host's locale, which is passed to each new execution.
    void updateAppSetting();

private:
    // Declared first, so that it is destroyed last: the manager must outlive all other members.
    RunnerRegistration _registration;
    std::string _locale;
    HVProgressListener* _listener;
    const bool _hasProcedure;
    CancellableExecution _execution;
    std::vector<EmbeddedHV::ReportedMessage> _messages; ///< of the last executed job
};
