#include "hvhost/job/InteractiveSession.h"

#include "Attention.h"
#include "dialog/HVInteractive.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/FaultWording.h"
#include "hvhost/base/InterruptWatch.h"

namespace {

/// Stops a request when the user asks for it: cancels the running job and rejects the later jobs of
/// the request.
class StopRequest : public VexaAdapter::InterruptHandler
{
public:
    explicit StopRequest(HVInteractive& object)
        : _object(object), _earlier(GetAdapter()->getInterruptHandler())
    {
        GetAdapter()->setInterruptHandler(this);
    }
    ~StopRequest() override { GetAdapter()->setInterruptHandler(_earlier); }
    StopRequest(const StopRequest&) = delete;
    StopRequest& operator=(const StopRequest&) = delete;

    void interrupt() override { _object.cancelExecution(); }

private:
    HVInteractive& _object;
    InterruptHandler* _earlier;
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
                const StopRequest stop(object);
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
        _host.warn(withFileName(message, origin));
    // A stop that comes after the last job has no effect, because the result exists.
    if (!isDone || object.getState() == HVProgressListener::Cancelled)
        _watch.check();
    if (isDone)
        return;
    EngineFault fault;
    if (!object.hasError(fault.id, fault.text, fault.detail))
        throw CommandFault(ExitStatus::JobFailed, source + ": the request failed without a reason");
    _host.log("failed: " + fault.id + " " + fault.text + " " + fault.detail);
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
