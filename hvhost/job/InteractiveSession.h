#pragma once

#include <functional>
#include <string>

#include "hvhost/job/HostSession.h"

class HVInteractive;

/// Runs the requests of one command on an HVInteractive, the object behind a dialog or a viewer of
/// the host. The user can interrupt a request. Does not own the watch and the object. Make the
/// object after the session, because the session starts the Java virtual machine.
class InteractiveSession
{
public:
    InteractiveSession(const std::string& command, const CommonOptions& options,
                       const InterruptWatch& watch)
        : _watch(watch), _host(command, options, watch)
    {
    }

    HostSession& host() { return _host; }
    /// Runs a request of the object and prints the messages of its last job as warnings. Throws
    /// CommandFault with the reason if the request returns false. An error outside a job is
    /// reported for `source`; `explain` may replace its text, and may be empty.
    using Explain = std::function<std::string(const std::string& text)>;
    void perform(HVInteractive& object, const std::function<bool()>& request,
                 const std::string& source, const JobOrigin& origin, const Explain& explain = {});
    /// Throws CommandFault if the user stopped the command. For requests that succeed without an
    /// answer, for example a question to a service that was stopped.
    void checkStop() const;

private:
    void checkOutcome(HVInteractive& object, bool isDone, const std::string& source,
                      const JobOrigin& origin, const Explain& explain);

    const InterruptWatch& _watch;
    HostSession _host;
};
