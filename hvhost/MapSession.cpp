#include "MapSession.h"

#include <algorithm>
#include <filesystem>

#include "ArchiveProblem.h"
#include "Attention.h"
#include "CommandFault.h"
#include "Dataset.h"
#include "FaultWording.h"
#include "InterruptWatch.h"
#include "JobText.h"
#include "ReadableFile.h"
#include "SvrDMDataset.h"
#include "geo/HVInteractiveSTEM.h"
#include "runner/HVRunner.h"
#include "support/Conversions.h"

namespace {

/// Stops a request when the user asks for it: the job that runs is cancelled, and the jobs that the
/// request would run after it are refused.
class StopRequest : public VexaAdapter::InterruptHandler
{
public:
    explicit StopRequest(HVInteractiveSTEM& maps)
        : _maps(maps), _earlier(GetAdapter()->getInterruptHandler())
    {
        GetAdapter()->setInterruptHandler(this);
    }
    ~StopRequest() override { GetAdapter()->setInterruptHandler(_earlier); }
    StopRequest(const StopRequest&) = delete;
    StopRequest& operator=(const StopRequest&) = delete;

    void interrupt() override { _maps.cancelExecution(); }

private:
    HVInteractiveSTEM& _maps;
    InterruptHandler* _earlier;
};

/// A path has no protocol in front.
bool isAddress(const std::string& source)
{
    return source.find("://") != std::string::npos;
}

/// The number of a well-known id; 0 for a text that is none.
int wkidOf(std::string text)
{
    if (text.starts_with("EPSG:") || text.starts_with("epsg:"))
        text.erase(0, text.find(':') + 1);
    constexpr std::size_t kMostDigits = 9;
    const bool isNumber = !text.empty() && text.size() <= kMostDigits &&
                          text.find_first_not_of("0123456789") == std::string::npos;
    return isNumber ? String2Integer(text) : 0;
}

} // namespace

MapSession::MapSession(const std::string& command, const CommonOptions& options,
                       const InterruptWatch& watch)
    : _watch(watch), _host("map " + command, options, watch),
      _maps(std::make_unique<HVInteractiveSTEM>())
{
}

MapSession::~MapSession() = default;

void MapSession::perform(const std::function<bool(HVInteractiveSTEM&)>& request,
                         const std::string& source, const JobOrigin& origin)
{
    _host.perform(
        [&] {
            bool isDone = false;
            {
                const StopRequest stop(*_maps);
                isDone = request(*_maps);
            }
            settle(isDone, source, origin);
            return true;
        },
        origin);
}

/// Tells of the last job, and ends the command if the request did not succeed.
void MapSession::settle(bool isDone, const std::string& source, const JobOrigin& origin)
{
    for (const std::string& message : _maps->getMessages())
        _host.warn(withFileName(message, origin));
    // A stop that came after the last job changes nothing: the result is there.
    if (!isDone || _maps->getState() == HVProgressListener::Cancelled)
        _watch.check();
    if (isDone)
        return;
    EngineFault fault;
    if (!_maps->hasError(fault.id, fault.text, fault.detail))
        throw CommandFault(ExitStatus::JobFailed, source + ": the request failed without a reason");
    _host.log("failed: " + fault.id + " " + fault.text + " " + fault.detail);
    // Without an id it is no job that says so, but what was found before one.
    if (fault.id.empty()) {
        // The library reports an archive that it cannot unpack as one without a shape file.
        const std::string problem = archiveProblem(source);
        throw CommandFault(ExitStatus::Input,
                           source + ": " + (problem.empty() ? fault.text : problem));
    }
    throw wordFault(fault, {}, origin);
}

void MapSession::checkStop() const
{
    _watch.check();
}

/// The engine tells the full name, which a request for a map needs to know that there is a target.
KnownSystem MapSession::system(const std::string& option, const std::string& text)
{
    if (text.empty())
        return {};
    const int wkid = wkidOf(text);
    const std::string info = wkid > 0 ? _host.runner().getCoordinatesSystemInfo(wkid)
                                      : _host.runner().getCoordinatesSystemInfo(text);
    KnownSystem system;
    std::string wkt;
    HVRunner::CSTYPE type = HVRunner::CSTYPE_None;
    if (!HVRunner::ParseCoordinatesSystemInfo(info, system.wkid, system.name, wkt, type))
        throw CommandFault(ExitStatus::Usage, option + " " + text + ": no such coordinate system",
                           "a system is named by its whole name, or by its id as in 4326");
    return system;
}

MapInput::MapInput(const MapOptions& options, bool needsLayer)
    : _options(options), _name(EmbeddedHV::shownAddress(options.source)),
      _isService(isAddress(options.source))
{
    if (_isService) {
        _location = options.source;
        if (needsLayer && !options.layer)
            throw CommandFault(ExitStatus::Usage, name() + ": the layer of the service is missing",
                               "hvhost map info lists the layers; --layer ID chooses one");
        return;
    }
    if (options.layer)
        throw CommandFault(ExitStatus::Usage, name() + ": only a map service has layers",
                           "leave --layer out");
    checkPath(name());
    if (!std::filesystem::exists(name()))
        throw CommandFault(ExitStatus::Input, name() + ": no such file");
    if (std::filesystem::is_directory(name()))
        throw CommandFault(ExitStatus::Input, name() + ": this is a folder, not a file");
    _location = std::filesystem::absolute(name()).lexically_normal().string();
}

JobOrigin MapInput::origin() const
{
    JobOrigin origin;
    origin.inputs = {{_location, name()}};
    origin.hasInputOptions = false;
    return origin;
}

// The dataset outlives the scope, so nobody else has to own its source.
KnownDataset::KnownDataset(const Dataset& dataset)
    : _id(SvrDMDataset::Register({&dataset.source(), [](const VEXA_DataSource*) {}}))
{
}

KnownDataset::~KnownDataset()
{
    SvrDMDataset::Unregister(_id);
}
