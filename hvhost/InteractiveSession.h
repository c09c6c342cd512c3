#pragma once

#include <functional>
#include <string>

#include "HostSession.h"

class HVInteractive;

/// One command's stay with an object that answers a dialog or a viewer of the host, without
/// windows; the user can interrupt its requests. The object and the watch are borrowed, and the
/// object must be made after the session, which starts the Java virtual machine.
class InteractiveSession
{
public:
    InteractiveSession(const std::string& command, const CommonOptions& options,
                       const InterruptWatch& watch)
        : _watch(watch), _host(command, options, watch)
    {
    }

    HostSession& host() { return _host; }
    /// Runs a request of the object, and prints the messages of its last job as warnings. Throws
    /// CommandFault with the reason of a request that is false; one that no job gave is a fault of
    /// `source`, told in the words of `explain`, which gets the library's text and may be empty.
    using Explain = std::function<std::string(const std::string& text)>;
    void perform(HVInteractive& object, const std::function<bool()>& request,
                 const std::string& source, const JobOrigin& origin, const Explain& explain = {});
    /// Throws CommandFault if the user stopped the command: for a request that succeeds without an
    /// answer, as a question to a service does when it is stopped.
    void checkStop() const;

private:
    void settle(HVInteractive& object, bool isDone, const std::string& source,
                const JobOrigin& origin, const Explain& explain);

    const InterruptWatch& _watch;
    HostSession _host;
};
