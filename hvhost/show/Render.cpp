#include "hvhost/show/Render.h"

#include <filesystem>
#include <memory>

#include "OutputTree.h"
#include "TnOutput.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/base/JsonFile.h"
#include "hvhost/base/StandardStreams.h"
#include "hvhost/job/HostSession.h"
#include "hvhost/show/OutputShown.h"
#include "hvhost/show/RenderOrder.h"
#include "hvhost/show/Rendering.h"
#include "hvhost/show/ShownResult.h"
#include "hvhost/show/TextTable.h"

namespace {

constexpr const char* kResultHint =
    "a result document has objects at its top, with tables, charts or notifications";

/// Reads a document. Its top must be an object.
JsonFile readDocument(const std::string& name, const InterruptWatch& watch)
{
    JsonFile document(name, watch);
    if (!document.json.is_object())
        throw CommandFault(ExitStatus::Input,
                           document.name +
                               ": this is JSON, but no object, and so no result document",
                           kResultHint);
    return document;
}

std::vector<RenderOrder> ordersOf(const RenderOptions& options, const JsonFile& document,
                                  const InterruptWatch& watch)
{
    if (options.order.empty() && !isResultDocument(document.json))
        throw CommandFault(ExitStatus::Input,
                           document.name + ": this is JSON, but no result document", kResultHint);
    if (options.order.empty())
        return everythingIn(document.json);
    return readOrders(JsonFile(options.order, watch), document.json, watch);
}

/// Only this warning informs the user that an ordered location is empty.
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

/// Renders all orders. The output outlives its procedure.
std::shared_ptr<const OutputHeading> renderAll(const std::vector<RenderOrder>& orders,
                                               const JsonFile& document, bool showsTimes,
                                               HostSession& session, const InterruptWatch& watch)
{
    TnProcedure procedure(std::filesystem::path(document.name).stem().string());
    Rendering rendering(session, procedure, document.name, document.text, showsTimes);
    for (const RenderOrder& order : orders) {
        watch.check();
        warnOfEmptyLocations(order, document, session);
        rendering.render(order);
    }
    if (procedure.node()->items.empty())
        session.warn(document.name + ": there is nothing to show");
    return procedure.node();
}

} // namespace

void render(const RenderOptions& options, const CommonOptions& common)
{
    const InterruptWatch watch(common.timeout);
    const ShownOptions& shown = options.shown;
    const ShownResult result(shown.output, shown.force, watch);
    const std::string form = formOf(shown.format, shown.output, {"html"});
    const OutputLook look{form, result.isFile(), textForm(shown.text, form, result.isFile())};
    InterruptWatch::Abandonable work(watch);
    const JsonFile document = readDocument(options.document, watch);
    const std::vector<RenderOrder> orders = ordersOf(options, document, watch);
    HostSession session("render", common, watch);
    const auto output = renderAll(orders, document, options.debug, session, watch);
    session.countShownWarnings();
    work.end();
    result.deliver([&](std::ostream& out) { writeOutput(*output, look, out); });
    session.finish();
}
