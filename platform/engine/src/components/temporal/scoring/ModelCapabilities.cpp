#include "components/temporal/scoring/ModelCapabilities.h"

#include <sstream>

#include <pugixml.hpp>

#include "ErrorIds.h"
#include "JobError.h"
#include "components/ComponentContainers.h"
#include "components/ContainerFile.h"
#include "components/temporal/model/ModelArchive.h"
#include "components/temporal/preparation/NamedLayout.h"
#include "components/temporal/scoring/ScoreStage.h"

namespace EmbeddedHV {
namespace {

/// The document of the model's properties.
std::string propertiesDocument(const TcmModel& model)
{
    pugi::xml_document document;
    pugi::xml_node root = document.append_child("ModelProperties");
    const auto add = [&root](const char* name, const std::string& value) {
        pugi::xml_node property = root.append_child("Property");
        property.append_attribute("name").set_value(name);
        property.append_attribute("value").set_value(value.c_str());
    };
    add("modelType", "temporalCausal");
    add("seriesCount", std::to_string(model.series.size()));
    add("targetCount", std::to_string(model.equations.size()));
    add("lags", std::to_string(model.lags));
    add("trainingPoints", std::to_string(model.trainingPoints));
    add("outlierLevel", Json(model.outlierLevel).dump());
    std::ostringstream text;
    document.save(text, "  ", pugi::format_default, pugi::encoding_utf8);
    return text.str();
}

/// The fields that a dataset must have: those of the time, the dimensions and the metrics.
Fields inputFields(const NamedSeries& series)
{
    Fields fields;
    if (!series.axis.isRecordNumber())
        fields = series.axis.fields;
    fields.insert(fields.end(), series.dimensions.begin(), series.dimensions.end());
    for (const std::string& metric : series.metrics)
        fields.emplace_back(metric, CFField::Continuous, CFField::Real);
    return fields;
}

/// The fields that rtsdp gives after tcm:score.
Fields outputFields(const TcmModel& model, const NamedSeries& series, const std::string& component)
{
    std::vector<std::string> targets;
    for (const SeriesEquation& equation : model.equations)
        targets.push_back(model.series[equation.series].id);
    return namedLayout(scoredFields(targets, true), series, true, component).fields;
}

std::vector<ContainerMember> capabilitiesOf(const ModelArchive& archive, const StepCall& call)
{
    const TcmModel model = archive.model();
    const NamedSeries series = namedSeriesOf(
        archive.preparation(), {call.name, {}, kModelPreparationEntry}, call.context.message);
    return {{"ScoreInputDataModel.xml", dataModelOf(inputFields(series))},
            {"ScoreOutputDataModel.xml", dataModelOf(outputFields(model, series, call.name))},
            {"ScoreModelProp.xml", propertiesDocument(model)}};
}

/// Writes the documents into a container.
class CapabilitiesOutput : public Output
{
public:
    CapabilitiesOutput(const StepCall& call, const std::string& destination,
                       std::vector<ContainerMember> members)
        : _context(call.context), _file(destination, call.name), _members(std::move(members))
    {
        _context.announce(destination, call.name);
    }

    std::string target() const override { return _file.destination(); }
    std::string statement(const std::string& select) override { return select; }
    void commit() override
    {
        _file.write(_members);
        // Before the file gets its name: nothing may fail after that.
        const std::string written = canonicalPath(_file.destination());
        _file.commit();
        _context.unwritten.erase(written);
    }

private:
    JobContext& _context;
    ContainerFile _file;
    std::vector<ContainerMember> _members;
};

} // namespace

StepResult planModelCapabilities(StepCall& call)
{
    const Settings settings = call.settings();
    if (!settings.flag("isModelCapabilities").value_or(false))
        throw JobError(errors::kNotAvailable,
                       {.step = call.name,
                        .what = "only the capabilities of a temporal causal model are given "
                                "(\"isModelCapabilities\": true); tcm:score and tcm:ar score "
                                "records"});
    settings.reportOthers(call.context.message);
    const std::vector<ComponentContainer> results = outputContainers(call);
    if (results.size() != 1)
        throw JobError(errors::kSettingType, {.step = call.name,
                                              .what = std::to_string(results.size()) +
                                                      " output containers are given, not one"});
    const ModelArchive archive(modelPathOf(call), call.name);
    return {emptyNode(), std::make_unique<CapabilitiesOutput>(call, results.front().path,
                                                              capabilitiesOf(archive, call))};
}

} // namespace EmbeddedHV
