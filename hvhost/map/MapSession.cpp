#include "hvhost/map/MapSession.h"

#include <algorithm>
#include <filesystem>

#include "JobText.h"
#include "geo/HVInteractiveSTEM.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/ReadableFile.h"
#include "hvhost/map/ArchiveProblem.h"
#include "runner/HVRunner.h"
#include "support/Conversions.h"

namespace {

/// A path does not begin with a protocol.
bool isAddress(const std::string& source)
{
    return source.find("://") != std::string::npos;
}

/// The number of a well-known id; 0 if the text is not one.
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
    : _session("map " + command, options, watch), _maps(std::make_unique<HVInteractiveSTEM>())
{
}

MapSession::~MapSession() = default;

void MapSession::perform(const std::function<bool(HVInteractiveSTEM&)>& request,
                         const std::string& source, const JobOrigin& origin)
{
    // If the library cannot unpack an archive, it reports that the archive has no shape file.
    const auto explain = [&](const std::string& text) {
        const std::string problem = archiveProblem(source);
        return problem.empty() ? text : problem;
    };
    _session.perform(
        *_maps, [&] { return request(*_maps); }, source, origin, explain);
}

/// Gets the full name from the engine. A request for a map needs it.
KnownSystem MapSession::system(const std::string& option, const std::string& text)
{
    if (text.empty())
        return {};
    const int wkid = wkidOf(text);
    const std::string info = wkid > 0 ? host().runner().getCoordinatesSystemInfo(wkid)
                                      : host().runner().getCoordinatesSystemInfo(text);
    KnownSystem system;
    std::string wkt;
    HVRunner::CSTYPE type = HVRunner::CSTYPE_None;
    if (!HVRunner::ParseCoordinatesSystemInfo(info, system.wkid, system.name, wkt, type))
        throw CommandFault(ExitStatus::Usage, option + " " + text + ": no such coordinate system",
                           "a system is named by its whole name, or by its id as in 4326");
    return system;
}

MapInput::MapInput(const MapOptions& options, bool needsLayer)
    : _name(EmbeddedHV::shownAddress(options.source)), _layer(options.layer),
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
