#include <string_view>

#include "ErrorIds.h"
#include "JobError.h"
#include "steps/FileOutput.h"
#include "steps/GeoJsonOutput.h"
#include "steps/StepCall.h"
#include "steps/TableOutput.h"

namespace EmbeddedHV {
namespace {

constexpr std::pair<std::string_view, FileKind> kFileTypes[] = {
    {"application/x-vexa-sav", FileKind::Sav},
    {"text/csv", FileKind::Csv},
    {"hvbf", FileKind::Hvbf},
};
constexpr std::string_view kGeoJson = "text/geojson";

/// The kind of table; empty for GeoJSON, which is a document.
std::optional<FileKind> kindOf(const Settings& settings)
{
    const std::string type = settings.neededText("type");
    for (const auto& [name, kind] : kFileTypes)
        if (name == type)
            return kind;
    if (type != kGeoJson)
        settings.refuse("type", "is \"" + type +
                                    "\"; known are application/x-vexa-sav, text/csv, "
                                    "text/geojson and hvbf");
    return std::nullopt;
}

std::unique_ptr<Output> tableOutput(StepCall& call, const Settings& settings)
{
    const std::string name = settings.neededText("dataSource");
    const std::string mode = settings.text("mode").value_or("overwrite");
    if (mode != "append" && mode != "overwrite")
        settings.refuse("mode", "is \"" + mode + "\"; known are append and overwrite");
    // A read step looks for an iterator first, so it would never read the table.
    if (call.context.iterators.contains(name))
        settings.refuse("dataSource",
                        "is \"" + name + "\", the name of a row iterator that the job reads");
    const bool append = mode == "append";
    // Whether the source exists, and which fields it has, is known after the previous statement has
    // run.
    if (append && call.context.unwritten.contains(name))
        throw NotYetWritten{};
    auto output = std::make_unique<TableOutput>(call.context, name, append, call.input()->fields);
    call.context.unwritten.insert(name);
    return output;
}

/// The metadata of the GeoJSON document: its resource and its key.
GeoJsonMetadata metadataOf(const Settings& settings, const MessageSink& message)
{
    GeoJsonMetadata metadata;
    if (!settings.has("metadata"))
        return metadata;
    const Settings object = settings.neededObject("metadata");
    metadata.resourceId = object.neededText("resourceId");
    metadata.key = object.neededText("key");
    object.reportOthers(message);
    return metadata;
}

std::unique_ptr<Output> fileOutput(StepCall& call, const Settings& settings)
{
    JobContext& context = call.context;
    FileOutputSettings file;
    file.path = context.files.resolve(settings.neededText("dataDestination"), context.containers);
    const std::string model = settings.text("dataModelDestination").value_or("");
    if (!model.empty())
        file.modelPath = context.files.resolve(model, context.containers);
    const std::optional<FileKind> kind = kindOf(settings);
    file.password = settings.text("dataPassword").value_or("");
    if (!file.password.empty() && kind != FileKind::Sav)
        settings.refuse("dataPassword", "is given, but only a file of type "
                                        "application/x-vexa-sav can be sealed");
    if (!file.password.empty())
        context.require(Feature::SealedFiles, call.name);
    if (!kind)
        context.require(Feature::Maps, call.name);
    if (!kind)
        return std::make_unique<GeoJsonOutput>(context, file.path, file.modelPath,
                                               metadataOf(settings, context.message),
                                               call.input()->fields);
    file.kind = *kind;
    return context.dataFiles->output(context, file, call.input()->fields);
}

} // namespace

/// Ends a chain. Its records go to a data source or into files.
StepResult planWrite(StepCall& call)
{
    const Settings settings = call.settings();
    if (settings.has("dataSource") && settings.has("dataDestination"))
        throw JobError(errors::kSettingType,
                       {.step = call.name,
                        .what = "more than one destination is given: either \"dataSource\" or "
                                "\"dataDestination\" can be"});
    if (!settings.has("dataSource") && !settings.has("dataDestination"))
        throw JobError(errors::kSettingMissing,
                       {.step = call.name,
                        .what = "no destination is given: the setting \"dataDestination\" or "
                                "\"dataSource\" is missing"});
    StepResult result{call.input(), settings.has("dataSource") ? tableOutput(call, settings)
                                                               : fileOutput(call, settings)};
    settings.reportOthers(call.context.message);
    return result;
}

} // namespace EmbeddedHV
