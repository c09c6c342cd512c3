#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

class EngineFaults;

/// What came of one run of a road.
struct RoadResult
{
    bool succeeded = false;
    /// All that the run made, for comparison with a run without a fault.
    std::string output;
    /// What is wrong with the way in which it ended, such as a failure that is not told; else
    /// empty.
    std::string complaint;
    /// How a failure is told, for reports.
    std::string told;
};

/// A piece of work that uses the library from one end to the other, as often as wanted.
class Road
{
public:
    virtual ~Road() = default;
    /// Turns faults on with true, off with false.
    using FaultSwitch = std::function<void(bool)>;
    /// Faults are on during the work only, not while its result is looked at. Nothing that is
    /// thrown leaves it.
    virtual RoadResult run(const FaultSwitch& faults) = 0;
    /// Files and folders that are there, and what else a run may leave, by name.
    virtual std::vector<std::string> filesLeft() const = 0;
    /// Between runs: takes away what a run may leave.
    virtual void cleanUp() = 0;
    /// The engine's calls, for faults of them.
    virtual EngineFaults& engineFaults() = 0;
};

struct NamedRoad
{
    std::string name;
    std::function<std::unique_ptr<Road>()> make;
};

/// Commands of the host program, on the embedded engine. `data` holds the sample data; the commands
/// write into `folder` and keep temporary files below the process's TMPDIR.
std::vector<NamedRoad> commandRoads(const std::string& data, const std::string& folder);
/// Requests of a map dialog and of a viewer of models, on an engine that follows a script.
std::vector<NamedRoad> dialogRoads();
