#include "hvhost/job/InteractiveSession.h"

#include "Attention.h"
#include "base/ScopeExit.h"
#include "dialog/HVInteractive.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/FaultWording.h"
#include "hvhost/base/InterruptWatch.h"

namespace {

/// Cancels the running job of a request, and rejects the later ones, when the user stops it.
struct StopRequest : VexaAdapter::InterruptHandler
{
    explicit StopRequest(HVInteractive& stopped) : object(stopped) {}
    void interrupt() override { object.cancelExecution(); }

    HVInteractive& object;
};

} // namespace

void InteractiveSession::perform(HVInteractive& object, const std::function<bool()>& request,
                                 const std::string& source, const JobOrigin& origin,
                                 const Explain& explain)
{
    _host.perform(
        [&] {
            bool isDone = false;
            {
                StopRequest stop(object);
                VexaAdapter& adapter = *GetAdapter();
                VexaAdapter::InterruptHandler* const earlier = adapter.getInterruptHandler();
                adapter.setInterruptHandler(&stop);
                const base::ScopeExit restore([&] { adapter.setInterruptHandler(earlier); });
                isDone = request();
            }
            checkOutcome(object, isDone, source, origin, explain);
            return true;
        },
        origin);
}

/// Prints the messages of the last job. Throws if the request did not succeed.
void InteractiveSession::checkOutcome(HVInteractive& object, bool isDone, const std::string& source,
                                      const JobOrigin& origin, const Explain& explain)
{
    for (const std::string& message : object.getMessages())
        _host.warn(wordMessage(message, object.getMessageDetail(message), origin));
    // A stop that comes after the last job has no effect, because the result exists.
    if (!isDone || object.getState() == HVProgressListener::Cancelled)
        _watch.check();
    if (isDone)
        return;
    EngineFault fault;
    if (!object.hasError(fault.id, fault.text, fault.detail))
        throw CommandFault(ExitStatus::JobFailed, source + ": the request failed without a reason");
    _host.log("failed: " + logText(fault));
    // Without an id, the error was found before a job ran.
    if (fault.id.empty())
        throw CommandFault(ExitStatus::Input,
                           source + ": " + (explain ? explain(fault.text) : fault.text));
    throw wordFault(fault, {}, origin);
}

void InteractiveSession::checkStop() const
{
    _watch.check();
}
