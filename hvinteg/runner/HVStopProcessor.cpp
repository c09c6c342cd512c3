#include "runner/HVStopProcessor.h"

#include <atomic>

#include "Attention.h"
#include "HostLines.h"
#include "TnOutput.h"
#include "runner/HostBlocks.h"

namespace {

/// The host's handle for its way out. There is one for the process; whoever comes last is right.
std::atomic<void*>& stopWorkspace()
{
    static std::atomic<void*> workspace = nullptr;
    return workspace;
}

constexpr double kTicksPerSecond = 1000.0;

} // namespace

HVStopProcessor::HVStopProcessor(double timeLimit)
    : _startTicks(HostMilliseconds()), _timeLimit(timeLimit)
{
    stopWorkspace().store(Workspace());
}

HVStopProcessor::~HVStopProcessor() = default;

bool HVStopProcessor::isLimitOver() const
{
    // So written that a limit which is not a number is none either.
    if (!(_timeLimit > 0))
        return false;
    // The difference of two counters that wrap around is right as a signed number.
    const auto elapsed = static_cast<std::int32_t>(HostMilliseconds() - _startTicks);
    return elapsed / kTicksPerSecond >= _timeLimit;
}

bool HVStopProcessor::CheckCancel() const
{
    if (isLimitOver())
        return true;
    int asked = 0;
    ATNCHK(&asked);
    return asked != 0;
}

bool HVStopProcessor::GetCancel()
{
    const bool limitOver = isLimitOver();
    if (limitOver) {
        TnError(TnString("Time out termination ...", true), kShowInOutput, kLevelError);
        endHostRun();
    }
    // Does not come back if the user asked for a stop: nothing may be pending here.
    ATNJMP(stopWorkspace().load());
    return limitOver;
}
