#include "runner/HVStopProcessor.h"

#include <atomic>

#include "Attention.h"
#include "HostLines.h"
#include "TnOutput.h"
#include "runner/HostBlocks.h"

namespace {

/// The host's handle for leaving the procedure. One per process: the latest is valid.
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
    // Written so that NaN counts as no limit.
    if (!(_timeLimit > 0))
        return false;
    // The signed difference is correct even after the counter wraps around.
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
    // Does not return if the user requested a stop, so no object here may need a destructor.
    ATNJMP(stopWorkspace().load());
    return limitOver;
}
