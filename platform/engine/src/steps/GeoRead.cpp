#include "steps/GeoRead.h"

#include <limits>

#include "ErrorIds.h"
#include "JobError.h"
#include "base/NearestName.h"
#include "datafile/FieldMetadata.h"
#include "datafile/InputFile.h"
#include "datafile/StorageWords.h"
#include "maps/GeographyLibrary.h"
#include "maps/LayerSource.h"

namespace EmbeddedHV {
namespace {

/// Reports why records could not be read. The database does not know the reason.
class LayerCheck : public SourceCheck
{
public:
    explicit LayerCheck(std::shared_ptr<LayerSource> source) : _source(std::move(source)) {}
    void start(Cancellation&, const Progress&) override {}
    void finish(Session&, Reporter&) override {}
    void abandon(const StatementFault&) override
    {
        if (_source->failure())
            throw JobError(*_source->failure());
    }

private:
    std::shared_ptr<LayerSource> _source;
};

int layerNumberOf(const Settings& source)
{
    const std::int64_t number = source.integer("queryLayer").value_or(0);
    if (number < 0 || number > std::numeric_limits<int>::max())
        source.refuse("queryLayer",
                      "is " + std::to_string(number) + ", which is not the number of a layer");
    return static_cast<int>(number);
}

std::unique_ptr<maps::Layer> openLayer(StepCall& call, const Settings& source,
                                       std::uint64_t mostRecords)
{
    const std::string location = source.neededText("location");
    const std::string type = source.neededText("type");
    if (type == "shp")
        return maps::geography().openShapeFile(call.context.inputPath(location));
    if (type != "mps")
        source.refuse("type", "is \"" + type + "\"; known are shp and mps");
    const Cancellation* cancellation = call.context.cancellation;
    return maps::geography().openServiceLayer(
        location, layerNumberOf(source), maps::LayerBounds{.wanted = mostRecords},
        [cancellation] { return cancellation && cancellation->stopping(); });
}

/// Applies the metadata of a data model document next to the source. It cannot change types.
void applyDocument(const StepCall& call, const Settings& source, Fields& fields)
{
    const auto path = source.text("dataModel");
    if (!path || path->empty())
        return;
    const std::string document = call.context.inputPath(*path);
    const Fields model = fieldsOfDataModel(readSmallFile(document, call.name),
                                           "the data model " + document, errors::kDataModel);
    for (const CFField& wanted : model) {
        const CFField* found = findField(fields, wanted.GetName());
        if (!found)
            throw JobError(errors::kDataModelMismatch,
                           {.step = call.name,
                            .what = "the data model " + document + " has a field \"" +
                                    wanted.GetName() + "\", which the map lacks" +
                                    base::suggestion(wanted.GetName(), fields, &CFField::GetName)});
        if (found->GetStorage() != wanted.GetStorage())
            throw JobError(errors::kDataModelMismatch,
                           {.step = call.name,
                            .what = "the field \"" + wanted.GetName() + "\" is " +
                                    typeWordOf(found->GetStorage()) + ", and in the data model " +
                                    document + " " + typeWordOf(wanted.GetStorage())});
    }
    // The last field of a layer has the shapes. If the document does not mention this, the field
    // stays geospatial.
    const CFGeo shapes = *fields.back().GetGeo();
    adoptMetadata(fields, model);
    if (!fields.back().GetGeo())
        fields.back().SetGeo(shapes);
}

} // namespace

NodePtr planGeospatial(StepCall& call, const Settings& source, std::uint64_t mostRecords)
{
    try {
        auto layer = std::make_shared<LayerSource>(openLayer(call, source, mostRecords),
                                                   *call.context.cancellation,
                                                   call.context.session->rowSources());
        // If only the data model is requested, check now that records can be read.
        if (call.context.plansOnly)
            layer->probe();
        auto node = std::make_shared<Node>();
        node->fields = layer->fields();
        applyDocument(call, source, node->fields);
        node->check = std::make_shared<LayerCheck>(layer);
        node->layer = layer;
        node->select = [table = layer->table()](const std::vector<std::string>&) {
            return "SELECT * FROM " + table;
        };
        source.reportOthers(call.context.message);
        return node;
    } catch (const maps::GeographyError& error) {
        throw maps::faultOf(error, call.name);
    }
}

} // namespace EmbeddedHV
