#pragma once

#include <string>

namespace CLI {
class App;
}
class MapSession;
struct KnownSystem;

/// The name for planar coordinates without a system.
inline constexpr const char* kPlane = "CARTESIAN";

/// The coordinate systems, each a name, an id or empty, and the output.
struct GeoJsonOptions
{
    std::string from;
    std::string to;
    std::string output;    ///< "-" for standard output
    std::string dataModel; ///< empty for none
    bool force = false;
};
/// Adds the output file and the systems. `from` is the help of --from: the default of the source's
/// system differs between commands. The options must outlive the application.
void addGeoJson(CLI::App& app, GeoJsonOptions& options, const char* from);

/// Rejects --to for coordinates without a system. Throws CommandFault (Usage).
void refuseTargetOfPlane(const GeoJsonOptions& options, bool isPlane);
/// The system of the source. Without the option, the source defines it, or has none. Throws
/// CommandFault as MapSession::system.
KnownSystem sourceSystem(MapSession& session, const std::string& text);
