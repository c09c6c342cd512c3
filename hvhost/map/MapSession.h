#pragma once

#include <functional>
#include <memory>
#include <string>

#include "hvhost/job/InteractiveSession.h"
#include "hvhost/map/MapOptions.h"

class HVInteractiveSTEM;

/// A coordinate system that the engine knows; empty for none.
struct KnownSystem
{
    std::string name;
    int wkid = 0;
};

/// The maps of the host for one command: a dialog without windows. The user can interrupt its
/// requests. Borrows the watch.
class MapSession
{
public:
    MapSession(const std::string& command, const CommonOptions& options,
               const InterruptWatch& watch);
    ~MapSession();
    MapSession(const MapSession&) = delete;
    MapSession& operator=(const MapSession&) = delete;

    HostSession& host() { return _session.host(); }
    /// Runs a request and prints the warnings of its last job. Throws CommandFault with the reason
    /// if the request returns false. An error outside a job is reported for `source`.
    void perform(const std::function<bool(HVInteractiveSTEM&)>& request, const std::string& source,
                 const JobOrigin& origin);
    /// Throws CommandFault if the user stopped the command. For requests that succeed without an
    /// answer, for example a question to a service that was stopped.
    void checkStop() const { _session.checkStop(); }
    /// The system in an option: a name, or a well-known id with or without "EPSG:". Throws
    /// CommandFault (Usage) if it is unknown.
    KnownSystem system(const std::string& option, const std::string& text);

private:
    InteractiveSession _session;
    std::unique_ptr<HVInteractiveSTEM> _maps;
};

/// A source of geometry, checked as far as possible without the engine.
class MapInput
{
public:
    /// Throws CommandFault: Input for a missing file; Usage for a file with a layer and for a
    /// service without a layer if one is needed.
    MapInput(const MapOptions& options, bool needsLayer);

    bool isService() const { return _isService; }
    /// The name for messages and results: a path as given, or an address without user info and
    /// query, because these may contain a key.
    const std::string& name() const { return _name; }
    /// The location for the engine: an address or an absolute path.
    const std::string& location() const { return _location; }
    std::optional<int> layer() const { return _layer; }
    JobOrigin origin() const;

private:
    std::string _name;
    std::string _location;
    std::optional<int> _layer;
    bool _isService;
};
