#include "hvhost/show/Rendering.h"

#include "JNIException.h"
#include "TnOutput.h"
#include "base/ListText.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/job/HostSession.h"
#include "render/jsonToTarn.h"
#include "runner/HVRunner.h"
#include "support/HVDebug.h"

namespace {

/// The keys that lead to an object of the document, separated by dots.
std::string placeOf(const RenderOrder& order, std::size_t object)
{
    std::string place = order.result;
    if (object == jsonToTarn::kDocument)
        return place;
    const auto& locations = order.objects[object].order.getLocations();
    if (!locations.empty())
        for (const std::string& key : locations.front())
            place += "." + key;
    return place;
}

} // namespace

Rendering::Rendering(HostSession& session, TnProcedure& procedure, const std::string& name,
                     const std::string& document, bool showsTimes)
    : _session(session), _procedure(procedure), _name(name), _document(document),
      _times(showsTimes ? std::make_unique<HVDebug>(&procedure) : nullptr)
{
}

Rendering::~Rendering()
{
    if (!_parsed)
        return;
    _parsed.reset();
    _session.runner().cleanJRef();
}

jsonToTarn& Rendering::parsed()
{
    if (!_parsed) {
        _parsed = std::make_unique<jsonToTarn>(&_procedure, &_procedure.DataSource(), _strings,
                                               _document);
        note("read");
    }
    return *_parsed;
}

void Rendering::render(const RenderOrder& order)
{
    const InterruptWatch::Abandonable work(_session.watch());
    try {
        generate(order);
    } catch (const JNIException& error) {
        throw CommandFault(ExitStatus::JobFailed, _name + ": " + error.message(), {},
                           error.trace());
    }
}

void Rendering::generate(const RenderOrder& order)
{
    jsonToTarn& output = parsed();
    output.removeObjects();
    for (const RenderOrder::Object& object : order.objects)
        output.addObjectToOutput(object.order);
    output.setGeoJSONMap(order.geoJson);
    output.showNotifications(order.showsNotifications);
    const bool isFound = output.generateOutput(order.result);
    // After a stop, the output is incomplete.
    _session.watch().check();
    if (!output.getTop().isGood())
        throw CommandFault(ExitStatus::Input, _name + ": " + output.getTop().getParserError());
    refuseFailures(order, output);
    if (!isFound)
        throw CommandFault(ExitStatus::JobFailed, _name + ": the result \"" + order.result +
                                                      "\" cannot be shown: Java does not find it");
    note("shown: " + order.result);
}

/// If Java fails on a part, the library continues with the next one. A command must not deliver
/// incomplete output.
void Rendering::refuseFailures(const RenderOrder& order, const jsonToTarn& output) const
{
    const auto& failures = output.getFailures();
    if (failures.empty())
        return;
    const std::string places =
        base::quotedList(failures, [&order](const jsonToTarn::Failure& failure) {
            return placeOf(order, failure.object);
        });
    throw CommandFault(ExitStatus::JobFailed,
                       _name + ": " + places + " cannot be shown: " + failures.front().reason, {},
                       failures.front().trace);
}

void Rendering::note(const std::string& comment)
{
    if (_times)
        _times->addOutputLine(comment);
}
