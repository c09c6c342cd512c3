
#include "ErrorIds.h"
#include "JobError.h"
#include "base/NearestName.h"
#include "steps/CsvRead.h"
#include "steps/GeoRead.h"
#include "steps/ParquetRead.h"
#include "steps/StepCall.h"

namespace EmbeddedHV {
namespace {

/// The settings that all kinds of sources share.
struct Limits
{
    std::uint64_t mostRecords = UINT64_MAX;
    std::int64_t errorThreshold = 0;
};

Limits limitsOf(const Settings& settings)
{
    Limits limits;
    if (const auto most = settings.integer("maxRecordsCount")) {
        if (*most < 0)
            settings.refuse("maxRecordsCount", "is below 0");
        limits.mostRecords = static_cast<std::uint64_t>(*most);
    }
    if (const auto threshold = settings.integer("readErrorThreshold")) {
        if (*threshold < -1)
            settings.refuse("readErrorThreshold", "is below -1");
        limits.errorThreshold = *threshold;
    }
    return limits;
}

/// Only text files can have single bad records, so the user is told that the threshold is ignored
/// elsewhere. Not for row iterators, because their jobs may also be run on files. Not for a
/// negative threshold, which other sources satisfy anyway.
void tellThresholdIgnored(const StepCall& call, const Limits& limits)
{
    if (limits.errorThreshold > 0)
        call.context.message(errors::kSettingIgnored, {.step = call.name,
                                                       .setting = "readErrorThreshold",
                                                       .what = "is for CSV files and is ignored"});
}

NodePtr iteratorNode(JobContext& context, const std::string& name, const Limits& limits)
{
    IteratorInput& input = context.iteratorInputs[name];
    if (input.node)
        return input.node;
    input.source = std::make_unique<RowSource>(*context.iterators.at(name), *context.cancellation,
                                               context.session->rowSources());
    input.node = context.dataFiles->rows(context, *input.source);
    input.node->fields = input.source->fields();
    input.node->readsOnce = true;
    input.node->shared = context.sharedIterators.contains(name);
    // A limit of one reader must not apply to another reader of the same rows.
    if (!input.node->shared)
        input.source->limitTo(limits.mostRecords);
    return input.node;
}

[[noreturn]] void refuseDataSource(const StepCall& call, const std::string& name)
{
    std::vector<std::string> names = call.context.dataSources.names();
    for (const auto& [iterator, rows] : call.context.iterators)
        names.push_back(iterator);
    const std::string suggestion = base::suggestion(name, names, std::identity{});
    throw JobError(errors::kUnknownDataSource,
                   {.step = call.name,
                    .name = name,
                    .hasSuggestion = !suggestion.empty(),
                    .what = "there is no data source \"" + name + "\"" + suggestion});
}

NodePtr namedSourceNode(StepCall& call, const std::string& name, const Limits& limits)
{
    JobContext& context = call.context;
    if (context.iterators.contains(name))
        return iteratorNode(context, name, limits);
    tellThresholdIgnored(call, limits);
    if (context.unwritten.contains(name))
        throw NotYetWritten{};
    const auto known = context.dataSources.find(name);
    if (!known)
        refuseDataSource(call, name);
    auto node = std::make_shared<Node>();
    node->fields = known->fields;
    std::string select = "SELECT " + context.dialect.columns(known->fields) + " FROM " +
                         context.session->tableName(known->table, TableOwner::Service);
    node->select = [select = std::move(select)](const std::vector<std::string>&) { return select; };
    return node;
}

/// The only location of a "filesystem" object.
Settings locationOf(const Settings& files)
{
    const Json& locations = files.neededList("locations");
    if (locations.empty())
        files.refuse("locations", "is empty");
    Settings first = files.objectAt(locations, "locations", 0);
    if (locations.size() > 1)
        throw JobError(errors::kNotAvailable,
                       {.step = files.step(),
                        .setting = files.pathOf("locations"),
                        .limit = 1,
                        .what = "names " + std::to_string(locations.size()) +
                                " files, the second " +
                                files.objectAt(locations, "locations", 1).neededText("path") +
                                ": more than one is not available in this engine yet"});
    return first;
}

FileKind kindOf(const std::string& format)
{
    if (format == "csv")
        return FileKind::Csv;
    return format == "sav" ? FileKind::Sav : FileKind::Hvbf;
}

NodePtr fileNode(StepCall& call, const Settings& files, const Limits& limits)
{
    const Settings location = locationOf(files);
    const Settings parser = location.neededObject("parser");
    const std::string format = parser.neededText("name");
    const Json noConfiguration = Json::object();
    const Settings configuration =
        parser.has("config") ? parser.neededObject("config") : Settings(noConfiguration, call.name);
    if (format != "csv" && format != "sav" && format != "hvbf")
        parser.refuse("name", "is \"" + format + "\"; known are csv, sav and hvbf");
    const std::string path = call.context.inputPath(location.neededText("path"));
    const DataFiles& dataFiles = *call.context.dataFiles;
    const FileKind kind = kindOf(format);
    dataFiles.checkInput(path, kind, call.name);
    std::optional<Fields> dataModel;
    if (const auto model = files.text("dataModel"); model && !model->empty()) {
        const std::string modelPath = call.context.inputPath(*model);
        dataModel = fieldsOfDataModel(dataFiles.document(modelPath, call.name),
                                      "the data model " + modelPath, errors::kDataModel);
    }
    NodePtr node;
    if (kind == FileKind::Csv) {
        const bool hasHeader = configuration.flag("hasHeader").value_or(false);
        node = dataFiles.csv(
            call.context, {path, hasHeader, limits.errorThreshold, limits.mostRecords, dataModel});
    } else {
        tellThresholdIgnored(call, limits);
        const std::string password =
            kind == FileKind::Sav ? configuration.text("dataPassword").value_or("") : std::string();
        node = dataFiles.parquet(call.context, {path, kind, password, dataModel});
    }
    for (const Settings* settings : {&files, &location, &parser, &configuration})
        settings->reportOthers(call.context.message);
    return node;
}

NodePtr limited(const Dialect& dialect, NodePtr node, const Limits& limits)
{
    if (limits.mostRecords == UINT64_MAX)
        return node;
    Fields fields = node->fields;
    const std::string columns = dialect.columns(fields);
    const std::string number = dialect.name(unusedName(fields, "hv_record"));
    return derivedNode(std::move(fields), {std::move(node)},
                       [columns, number, &dialect, limits](const std::vector<std::string>& inputs) {
                           return dialect.leading({columns, inputs[0], "", number,
                                                   static_cast<std::int64_t>(limits.mostRecords)});
                       });
}

NodePtr sourceNode(StepCall& call, const Settings& settings, const Limits& limits)
{
    if (settings.has("dataSource"))
        return namedSourceNode(call, settings.neededText("dataSource"), limits);
    if (settings.has("filesystem"))
        return fileNode(call, settings.neededObject("filesystem"), limits);
    tellThresholdIgnored(call, limits);
    call.context.require(Feature::Maps, call.name);
    return planGeospatial(call, settings.neededObject("geospatial"), limits.mostRecords);
}

} // namespace

StepResult planRead(StepCall& call)
{
    const Settings settings = call.settings();
    const Limits limits = limitsOf(settings);
    const int sources =
        settings.has("dataSource") + settings.has("filesystem") + settings.has("geospatial");
    if (sources == 0)
        throw JobError(errors::kSettingMissing,
                       {.step = call.name,
                        .what = "no source is given: the setting \"dataSource\", \"filesystem\" or "
                                "\"geospatial\" is missing"});
    if (sources > 1)
        throw JobError(errors::kSettingType,
                       {.step = call.name,
                        .what = "more than one source is given: only one of \"dataSource\", "
                                "\"filesystem\" and \"geospatial\" can be"});
    NodePtr node = sourceNode(call, settings, limits);
    settings.reportOthers(call.context.message);
    return {limited(call.context.dialect, std::move(node), limits), nullptr};
}

} // namespace EmbeddedHV
