#include "components/temporal/OutputComponent.h"

#include "ErrorIds.h"
#include "JobError.h"
#include "components/ComponentContainers.h"
#include "components/ContainerFiles.h"
#include "components/temporal/ExplanationRecords.h"
#include "components/temporal/ExplanationResults.h"
#include "components/temporal/ModelArchive.h"
#include "components/temporal/StatisticsDocument.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kResultsContainer = "Results";
constexpr const char* kResultsMember = "Results.json";
constexpr const char* kStatisticsMember = "statJson.json";

/// The model that a step explains, and what it needs of the model's other documents.
struct ExplainedModel
{
    TcmModel model;
    ModelFields fields;
};

ExplainedModel explainedModel(const StepCall& call)
{
    const std::vector<ComponentContainer> inputs = inputContainers(call);
    if (inputs.size() != 1)
        throw JobError(errors::kSettingType, call.name + ": the step reads one model, but " +
                                                 std::to_string(inputs.size()) +
                                                 " input containers are given");
    const ModelArchive archive(inputs.front().path, call.name);
    return {archive.model(), modelFieldsOf(archive.preparation(), archive.statistics(),
                                           call.name + ": " + inputs.front().path)};
}

std::vector<std::string> pathsOf(const std::vector<ComponentContainer>& containers)
{
    std::vector<std::string> paths;
    for (const ComponentContainer& container : containers)
        paths.push_back(container.path);
    return paths;
}

/// Takes the records, if there are any, and writes the documents once all are there.
class TcmOutput : public Output
{
public:
    TcmOutput(StepCall& call, ExplainedModel explained, ExplanationSettings settings)
        : _context(call.context), _component(call.name), _explained(std::move(explained)),
          _settings(std::move(settings)), _containers(outputContainers(call)),
          _files(call.context, pathsOf(_containers), call.name)
    {
        if (!call.inputs.empty())
            _records = explanationRecords(call.input()->fields, _explained.model, _explained.fields,
                                          _component, _context.message);
    }

    std::string target() const override { return "the result of " + _component; }
    std::string statement(const std::string& select) override
    {
        return _records ? _records->statement(select) : select;
    }
    bool takesRecords() const override { return _records != nullptr; }
    void take(duck::Chunk& chunk) override { _records->take(chunk); }

    void commit() override
    {
        ExplanationData data;
        if (_records)
            data = _records->finish();
        const PointLabels labels(data.points.empty() ? _explained.fields.points : data.points,
                                 _settings.timeOfDay);
        const ModelData values(_explained.model, std::move(data.table));
        const StopCheck check = stopCheckOf(_context, _component);
        const Explanation explanation(_explained.model, _records ? &values : nullptr, labels,
                                      _settings.isEncoded, check);
        for (std::size_t i = 0; i < _containers.size(); ++i)
            _files.write(i, {documentOf(_containers[i].name, explanation)});
        _files.publish();
    }

private:
    ContainerMember documentOf(const std::string& container, const Explanation& explanation) const
    {
        if (container == kResultsContainer)
            return {kResultsMember, explanationResults(explanation, _settings.artifacts)};
        return {kStatisticsMember, statisticsDocument(explanation, _settings.artifacts)};
    }

    JobContext& _context;
    std::string _component;
    ExplainedModel _explained;
    ExplanationSettings _settings;
    std::vector<ComponentContainer> _containers;
    ContainerFiles _files;
    std::unique_ptr<ExplanationRecords> _records; ///< null without an input
};

} // namespace

StepResult planTcmOutput(StepCall& call)
{
    ExplainedModel explained = explainedModel(call);
    ExplanationSettings settings =
        explanationSettings(call, SeriesFinder(explained.model, explained.fields.storages));
    NodePtr input = call.inputs.empty() ? emptyNode() : call.input();
    return {std::move(input),
            std::make_unique<TcmOutput>(call, std::move(explained), std::move(settings))};
}

} // namespace EmbeddedHV
