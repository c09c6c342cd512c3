#include "components/ComponentContainers.h"

#include "ErrorIds.h"
#include "JobError.h"

namespace EmbeddedHV {
namespace {

/// The address of the container in the job text, or its name if the address is empty. A name refers
/// to a container that was added to the job.
std::string placeOf(const Settings& container)
{
    const std::string name = container.neededText("name");
    const std::string uri = container.text("uri").value_or("");
    return uri.empty() ? name : uri;
}

/// `resolve` converts an address to a path.
template <class Resolve>
std::vector<ComponentContainer> containersOf(const StepCall& call, const Json& list,
                                             const std::string& key, Resolve resolve)
{
    // Wrap the list in an object, so that messages can name its elements.
    Json wrapped = Json::object();
    wrapped[key] = list;
    const Settings outer(wrapped, call.name);
    const Json& elements = outer.neededList(key);
    std::vector<ComponentContainer> containers;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const Settings container = outer.objectAt(elements, key, i);
        if (!container.flag("export").value_or(true))
            continue;
        ComponentContainer found{container.neededText("name"), resolve(placeOf(container))};
        for (const ComponentContainer& other : containers)
            if (other.path == found.path)
                container.refuse("uri", "names the same file as another container, " + found.path);
        container.reportOthers(call.context.message);
        containers.push_back(std::move(found));
    }
    return containers;
}

} // namespace

std::vector<ComponentContainer> inputContainers(const StepCall& call)
{
    if (call.inputContainers.is_null())
        throw JobError(errors::kSettingMissing,
                       {.step = call.name,
                        .what = "no input container is given, so there is nothing to read"});
    return containersOf(call, call.inputContainers, "input containers",
                        [&](const std::string& place) { return call.context.inputPath(place); });
}

std::vector<ComponentContainer> outputContainers(const StepCall& call)
{
    if (call.outputContainers.is_null())
        throw JobError(
            errors::kSettingMissing,
            {.step = call.name,
             .what = "no output container is given, so there is no place for the result"});
    const JobContext& context = call.context;
    return containersOf(
        call, call.outputContainers, "output containers",
        [&](const std::string& place) { return context.files.resolve(place, context.containers); });
}

} // namespace EmbeddedHV
