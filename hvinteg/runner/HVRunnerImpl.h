#pragma once

#include <atomic>
#include <memory>
#include <string>

#include "Execution.h"
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

    void prepareHVLJob(const std::string& jobText);
    void addInputContainer(HVStatContainer* container);
    void addOutputContainer(HVStatContainer* container);
    void addInputIterator(HVStatDataIterator* iterator);
    bool execute();
    void cancelExecution();
    void cleanExecution();
    EmbeddedHV::RowDataIterator* getOutputIterator(const std::string& fileName);
    bool getMetadata(const std::string& jobText, const HVStatContainer& container,
                     std::string& metadata);

    bool isStopProcessor() const { return _stopped; }
    void resetStopRrocessor();
    void updateAppSetting();

private:
    // First, so that it goes last: the manager outlives everything else that a runner holds.
    RunnerRegistration _registration;
    std::string _locale;
    std::unique_ptr<EmbeddedHV::Execution> _execution;
    HVProgressListener* _listener;
    const bool _hasProcedure;
    // A byte that the cancelling thread writes while another one reads it: atomic, without a lock.
    std::atomic<bool> _stopped = false;
};
