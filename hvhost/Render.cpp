#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <memory>

#include "CommandFault.h"
#include "Commands.h"
#include "ErrorText.h"
#include "HostSession.h"
#include "InterruptWatch.h"
#include "JNIException.h"
#include "JsonFile.h"
#include "OutputPage.h"
#include "OutputText.h"
#include "RenderOrder.h"
#include "ShownResult.h"
#include "StandardStreams.h"
#include "TextTable.h"
#include "TnOutput.h"
#include "render/jsonToTarn.h"
#include "runner/HVRunner.h"
#include "support/HVDebug.h"

namespace {

/// A document whose top is an object.
JsonFile readDocument(const std::string& name, const InterruptWatch& watch)
{
    JsonFile document(name, watch);
    if (!document.json.is_object())
        throw CommandFault(ExitStatus::Input, document.name + ": this is JSON, but no object, and "
                                                              "so no result document");
    return document;
}

std::vector<RenderOrder> ordersOf(const RenderOptions& options, const JsonFile& document,
                                  const InterruptWatch& watch)
{
    if (options.order.empty())
        return everythingIn(document.json);
    return readOrders(JsonFile(options.order, watch), document.json, watch);
}

/// Whoever orders something that is not there learns it from nobody else.
void warnOfEmptyLocations(const RenderOrder& order, const JsonFile& document, HostSession& session)
{
    const nlohmann::ordered_json& result = document.json.at(order.result);
    for (const RenderOrder::Object& object : order.objects)
        for (const std::vector<std::string>& location : object.order.getLocations()) {
            const nlohmann::ordered_json* const found = find(result, location);
            if (found == nullptr || found->is_string())
                session.warn(object.origin + ": there is nothing to show at this location of \"" +
                             order.result + "\"");
        }
}

/// Turns a document into output of the procedure.
class Rendering
{
public:
    Rendering(TnProcedure& procedure, const JsonFile& document, bool showsTimes)
        : _procedure(procedure), _document(document),
          _times(showsTimes ? std::make_unique<HVDebug>(&procedure) : nullptr)
    {
    }
    void render(const RenderOrder& order)
    {
        jsonToTarn output(&_procedure, &_procedure.DataSource(), _strings, _document.text);
        note("read");
        for (const RenderOrder::Object& object : order.objects)
            output.addObjectToOutput(object.order);
        output.setGeoJSONMap(order.geoJson);
        output.showNotifications(order.showsNotifications);
        if (!output.generateOutput(order.result) && !output.getTop().isGood())
            throw CommandFault(ExitStatus::Input,
                               _document.name + ": " + output.getTop().getParserError());
        note("shown: " + order.result);
    }

private:
    void note(const std::string& comment)
    {
        if (_times)
            _times->addOutputLine(comment);
    }

    TnProcedure& _procedure;
    const JsonFile& _document;
    FacSTDictionary _strings;
    std::unique_ptr<HVDebug> _times; ///< only if they are shown
};

/// The output, which stays when its procedure goes.
std::shared_ptr<const OutputHeading> renderAll(const std::vector<RenderOrder>& orders,
                                               const JsonFile& document, bool showsTimes,
                                               HostSession& session, const InterruptWatch& watch)
{
    TnProcedure procedure(std::filesystem::path(document.name).stem().string());
    try {
        Rendering rendering(procedure, document, showsTimes);
        for (const RenderOrder& order : orders) {
            watch.check();
            warnOfEmptyLocations(order, document, session);
            rendering.render(order);
            session.runner().cleanJRef();
        }
    } catch (const JNIException& error) {
        throw CommandFault(ExitStatus::JobFailed, document.name + ": " + error.message(), {},
                           error.trace());
    }
    if (procedure.node()->items.empty())
        session.warn(document.name + ": there is nothing to show");
    return procedure.node();
}

bool wantsColours(bool toFile)
{
    const char* const refused = std::getenv("NO_COLOR");
    return !toFile && isatty(STDOUT_FILENO) != 0 && (refused == nullptr || *refused == '\0');
}

void writeText(const OutputHeading& output, const RenderOptions& options, bool toFile,
               std::ostream& out)
{
    OutputTextOptions text;
    text.width = options.width > 0 ? static_cast<std::size_t>(options.width)
                 : toFile          ? kDefaultWidth
                                   : outputWidth();
    text.colours = wantsColours(toFile);
    writeOutputText(output, text, out);
}

void writePage(const OutputHeading& output, const RenderOptions& options, std::ostream& out)
{
    OutputPage page(output);
    if (options.document != kStandardStream)
        page.setSubtitle(options.document);
    try {
        page.write(out);
    } catch (const ErrorText& error) {
        throw CommandFault(ExitStatus::JobFailed, error.what());
    }
}

/// The form that is asked for, else the one that the name of the file speaks of, else text.
bool isPage(const RenderOptions& options)
{
    const std::string extension = std::filesystem::path(options.output).extension().string();
    const bool isNamedSo = extension == ".html" || extension == ".htm";
    return options.format.empty() ? isNamedSo : options.format == "html";
}

} // namespace

void render(const RenderOptions& options, const CommonOptions& common)
{
    const InterruptWatch watch(common.timeout);
    const ShownResult result(options.output, options.force, watch);
    const JsonFile document = readDocument(options.document, watch);
    const std::vector<RenderOrder> orders = ordersOf(options, document, watch);
    HostSession session("render", common, watch);
    const auto output = renderAll(orders, document, options.debug, session, watch);
    session.countShownWarnings();
    result.deliver([&](std::ostream& out) {
        if (isPage(options))
            writePage(*output, options, out);
        else
            writeText(*output, options, result.isFile(), out);
    });
    session.finish();
}
