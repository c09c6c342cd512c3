#include "hvhost/map/GeoJsonOptions.h"

#include <CLI/CLI.hpp>

#include "hvhost/base/CommandFault.h"
#include "hvhost/input/OptionChecks.h"
#include "hvhost/map/MapSession.h"

void addGeoJson(CLI::App& app, GeoJsonOptions& options, const char* from)
{
    app.add_option("OUT,-o", options.output, "The GeoJSON file to write; - for standard output")
        ->type_name("FILE")
        ->required()
        ->check(notEmpty());
    const auto add = [&app](const char* name, std::string& value, const char* shown,
                            const char* purpose) {
        app.add_option(name, value, purpose)->type_name(shown)->check(notEmpty())->group("Output");
    };
    add("--from", options.from, "SYSTEM", from);
    add("--to", options.to, "SYSTEM",
        "The coordinate system of the result, by name or id,\nfor example 4326; by default that of "
        "the source");
    add("--out-data-model", options.dataModel, "FILE", "Write the data model document here");
    app.add_flag("--force", options.force, "Replace existing files")->group("Output");
}

// An option without effect is rejected, so that the user does not rely on it.
void refuseTargetOfPlane(const GeoJsonOptions& options, bool isPlane)
{
    if (isPlane && !options.to.empty())
        throw CommandFault(ExitStatus::Usage,
                           "--to " + options.to + ": coordinates without a system cannot be moved",
                           "--from names the system that they are in");
}

KnownSystem sourceSystem(MapSession& session, const std::string& text)
{
    return text == kPlane ? KnownSystem{kPlane, 0} : session.system("--from", text);
}
