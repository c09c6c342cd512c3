#pragma once

#include <cstdint>

#include "support/HvintegExport.h"

/// Stops the input of a job: a row iterator asks it before each record whether the user requests a
/// stop or a time limit has expired. Copies share the start time of their limit.
class HVINTEG_EXPORT HVStopProcessor
{
public:
    /// `timeLimit` is in seconds, counted from the construction; 0 or less means none.
    explicit HVStopProcessor(double timeLimit = 0);
    HVStopProcessor(const HVStopProcessor&) = default;
    HVStopProcessor& operator=(const HVStopProcessor&) = default;

    virtual ~HVStopProcessor();
    /// Returns whether the limit has expired. If so, says that in the host's output and ends the
    /// host's run. In all cases the host may take control here and not return.
    virtual bool GetCancel();
    /// Whether the limit has expired or the user requests a stop. No side effects; any thread.
    virtual bool CheckCancel() const;

private:
    HVINTEG_HIDDEN bool isLimitOver() const;

    std::uint32_t _startTicks;
    double _timeLimit;
};
