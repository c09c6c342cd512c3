#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Commands.h"
#include "InteractiveSession.h"

class HVInteractiveSTEM;

/// A coordinate system that the engine knows; empty for none.
struct KnownSystem
{
    std::string name;
    int wkid = 0;
};

/// One command's stay with the maps of the host: a dialog without windows, whose requests the user
/// can interrupt. The watch is borrowed.
class MapSession
{
public:
    MapSession(const std::string& command, const CommonOptions& options,
               const InterruptWatch& watch);
    ~MapSession();
    MapSession(const MapSession&) = delete;
    MapSession& operator=(const MapSession&) = delete;

    HostSession& host() { return _session.host(); }
    /// Runs a request, and prints the warnings of its last job. Throws CommandFault with the reason
    /// of a request that is false; one that no job gave is a fault of `source`.
    void perform(const std::function<bool(HVInteractiveSTEM&)>& request, const std::string& source,
                 const JobOrigin& origin);
    /// Throws CommandFault if the user stopped the command: for a request that succeeds without an
    /// answer, as a question to a service does when it is stopped.
    void checkStop() const { _session.checkStop(); }
    /// The system of an option: a name, or a well-known id with or without "EPSG:". Throws
    /// CommandFault (Usage) for one that is not known.
    KnownSystem system(const std::string& option, const std::string& text);

private:
    InteractiveSession _session;
    std::unique_ptr<HVInteractiveSTEM> _maps;
};

/// A source of geometry, checked as far as it can be without the engine.
class MapInput
{
public:
    /// Throws CommandFault: Input for a file that is not there, Usage for a file with a layer and
    /// for a service without one where it is needed.
    MapInput(const MapOptions& options, bool needsLayer);

    bool isService() const { return _isService; }
    /// What messages and results call it: a path as given, or an address without user info and
    /// query, which may hold a key.
    const std::string& name() const { return _name; }
    /// What the engine is told: an address or an absolute path.
    const std::string& location() const { return _location; }
    std::optional<int> layer() const { return _options.layer; }
    JobOrigin origin() const;

private:
    MapOptions _options;
    std::string _name;
    std::string _location;
    bool _isService;
};
