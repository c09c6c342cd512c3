#include "Container.h"
#include "steps/DataModelExport.h"
#include "steps/NormalizedModel.h"
#include "steps/StepCall.h"

namespace EmbeddedHV {
namespace {

bool isNormalized(const StepCall& call)
{
    if (call.configuration.is_null())
        return false;
    const Settings settings = call.settings();
    const bool normalizes = settings.flag("normalizeDataModel").value_or(false);
    settings.reportOthers(call.context.message);
    return normalizes;
}

/// The file of the container: its address, or the job's container of this name if the address is
/// empty.
std::string pathOf(const StepCall& call, const Settings& exported)
{
    const JobContext& context = call.context;
    const std::string uri = exported.text("uri").value_or("");
    const std::string name = exported.text("name").value_or("");
    if (!uri.empty())
        return context.files.resolve(uri, context.containers);
    for (const Container* container : context.containers)
        if (!name.empty() && container->getName() == name)
            return context.files.resolve(name, context.containers);
    exported.refuse("uri", "is empty, and the job has no container \"" + name + "\"");
}

std::shared_ptr<DataModelExport> exportOf(const StepCall& call, const Fields& fields)
{
    if (call.exported.is_null())
        return nullptr;
    const Settings exported(call.exported, call.name);
    if (!exported.flag("export").value_or(false))
        exported.refuse("export", "is not true, as that of a container that a step writes is");
    const std::string path = pathOf(call, exported);
    exported.reportOthers(call.context.message);
    return std::make_shared<DataModelExport>(path, call.name, fields);
}

} // namespace

/// Exports the data model of its input and passes the records on, with that model.
StepResult planDataModelBuilder(StepCall& call)
{
    Fields fields = call.input()->fields;
    if (isNormalized(call))
        fields = normalizedModel(std::move(fields));
    auto exported = exportOf(call, fields);
    NodePtr node =
        derivedNode(std::move(fields), {call.input()}, [](const std::vector<std::string>& inputs) {
            return "SELECT * FROM " + inputs[0];
        });
    node->exported = std::move(exported);
    return {std::move(node), nullptr};
}

} // namespace EmbeddedHV
