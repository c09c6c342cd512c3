#include "Rendering.h"

#include "CommandFault.h"
#include "HostSession.h"
#include "InterruptWatch.h"
#include "JNIException.h"
#include "TnOutput.h"
#include "render/jsonToTarn.h"
#include "runner/HVRunner.h"
#include "support/HVDebug.h"

Rendering::Rendering(HostSession& session, TnProcedure& procedure, const std::string& name,
                     const std::string& document, bool showsTimes)
    : _session(session), _procedure(procedure), _name(name), _document(document),
      _times(showsTimes ? std::make_unique<HVDebug>(&procedure) : nullptr)
{
}

Rendering::~Rendering() = default;

void Rendering::render(const RenderOrder& order)
{
    const InterruptWatch::Abandonable work(_session.watch());
    try {
        generate(order);
        // What is shown after a stop is not all of it.
        _session.watch().check();
        _session.runner().cleanJRef();
    } catch (const JNIException& error) {
        throw CommandFault(ExitStatus::JobFailed, _name + ": " + error.message(), {},
                           error.trace());
    }
}

void Rendering::generate(const RenderOrder& order)
{
    jsonToTarn output(&_procedure, &_procedure.DataSource(), _strings, _document);
    note("read");
    for (const RenderOrder::Object& object : order.objects)
        output.addObjectToOutput(object.order);
    output.setGeoJSONMap(order.geoJson);
    output.showNotifications(order.showsNotifications);
    if (!output.generateOutput(order.result) && !output.getTop().isGood())
        throw CommandFault(ExitStatus::Input, _name + ": " + output.getTop().getParserError());
    note("shown: " + order.result);
}

void Rendering::note(const std::string& comment)
{
    if (_times)
        _times->addOutputLine(comment);
}
