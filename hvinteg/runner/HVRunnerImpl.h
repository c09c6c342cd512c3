#pragma once

#include <functional>
#include <memory>
#include <string>

#include "MetadataService.h"
#include "runner/CancellableExecution.h"
#include "runner/RunnerRegistration.h"

class HVProgressListener;
class HVStatContainer;
class HVStatDataIterator;

namespace EmbeddedHV {
class RowDataIterator;
}

/// The half of HVRunner that concerns the engine: one execution at a time, from its text to its
/// end. HVRunner forwards to it.
class HVRunnerImpl
{
public:
    /// The listener is borrowed. Throws what the start of the Java virtual machine throws.
    HVRunnerImpl(HVProgressListener* listener, bool hasProcedure);
    ~HVRunnerImpl();
    HVRunnerImpl(const HVRunnerImpl&) = delete;
    HVRunnerImpl& operator=(const HVRunnerImpl&) = delete;

    /// Ends the present execution, if there is one, before it makes the next. If the engine refuses
    /// the text, the new execution stays, closed to cancels, until cleanExecution disposes it.
    void prepareHVLJob(const std::string& jobText);
    /// These five need a prepared execution; the caller keeps the order, and nothing tests for it.
    void addInputContainer(HVStatContainer* container);
    void addOutputContainer(HVStatContainer* container);
    void addInputIterator(HVStatDataIterator* iterator);
    bool execute();
    /// Any thread, at any moment until endCancels. See CancellableExecution::cancel.
    void cancelExecution();
    /// The owner calls it before it destroys this object: returns when no cancel is under way on
    /// another thread.
    void endCancels() { _execution.close(); }
    /// Disposes and deletes. Waits for a cancel under way on another thread. If the engine throws
    /// in dispose, the object is deleted all the same.
    void cleanExecution();
    /// Answers with null, whatever the engine throws.
    EmbeddedHV::RowDataIterator* getOutputIterator(const std::string& fileName);
    /// Ends the present execution first; answers with nothing, whatever the engine throws, at the
    /// end of the execution too.
    bool getMetadata(const std::string& jobText, const HVStatContainer& container,
                     std::string& metadata);

    /// Ends the present execution, then asks the engine. False if either throws.
    bool askService(const std::function<void(EmbeddedHV::MetadataService&, JNIEnv*)>& question);

    bool isStopProcessor() const { return _execution.isStopped(); }
    /// For a runner with a procedure only: a dialog that was cancelled stays cancelled.
    void resetStopRrocessor();
    /// Takes the host's locale, which each execution is made with.
    void updateAppSetting();

private:
    // First, so that it goes last: the manager outlives everything else that a runner holds.
    RunnerRegistration _registration;
    std::string _locale;
    HVProgressListener* _listener;
    const bool _hasProcedure;
    CancellableExecution _execution;
};
