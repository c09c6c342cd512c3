#pragma once

#include <map>
#include <stdexcept>
#include <string>

#include "runtime/QueryFaults.h"

namespace EmbeddedHV {

/// Where a fault of the cluster comes from.
enum class ClusterFaultKind
{
    Address,
    Unreachable,
    Denied,
    SessionLost,
    Interrupted,
    Statement,
    Server,
    Use
};

/// A fault of the cluster's client as data. what() is the server's or the client's own message.
class ClusterFault : public std::runtime_error
{
public:
    /// `json` is what the client's ClusterFault.data returns.
    static ClusterFault of(const std::string& json);
    ClusterFault(ClusterFaultKind kind, const std::string& message)
        : std::runtime_error(message), _kind(kind)
    {
    }

    ClusterFaultKind kind() const { return _kind; }
    /// The name of the server's error condition; empty if it has none.
    const std::string& condition() const { return _condition; }
    /// Whether the condition is this one or one of its subclasses.
    bool isCondition(const std::string& name) const
    {
        return _condition == name || _condition.starts_with(name + ".");
    }
    /// A parameter of the condition; empty if it has none of this name.
    std::string parameter(const std::string& name) const;
    /// Whether the connection or the session is lost, so that no other statement can run.
    bool isOfConnection() const;

private:
    ClusterFaultKind _kind;
    std::string _condition;
    std::map<std::string, std::string> _parameters;
};

/// The address of a server without the user's token, for messages.
std::string shownCluster(const std::string& url);
/// The meaning of a fault of a statement. `url` is the server's address, for the message.
StatementFault statementFault(const ClusterFault& fault, const std::string& url);
/// A fault of the connection as an error of a job, with cause and remedy.
JobError connectionError(const ClusterFault& fault, const std::string& url);

} // namespace EmbeddedHV
