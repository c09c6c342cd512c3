#pragma once

#include <cstdint>

#include "support/HvintegExport.h"

/// Ends the feed of a job from below: a row iterator asks it at each record whether the user wants
/// a stop or a time limit is over. Copies share the start of their limit.
class HVINTEG_EXPORT HVStopProcessor
{
public:
    /// The limit is in seconds of waiting, counted from here; 0 or less for none.
    explicit HVStopProcessor(double timeLimit = 0);
    HVStopProcessor(const HVStopProcessor&) = default;
    HVStopProcessor& operator=(const HVStopProcessor&) = default;

    virtual ~HVStopProcessor();
    /// Whether the limit is over. Then it says so in the host's output and has the host end the
    /// run; in any case the host gets the chance to leave, and may not come back from here.
    virtual bool GetCancel();
    /// Whether the limit is over or the user asked for a stop. No side effects; any thread.
    virtual bool CheckCancel() const;

private:
    bool isLimitOver() const;

    std::uint32_t _startTicks;
    double _timeLimit;
};
