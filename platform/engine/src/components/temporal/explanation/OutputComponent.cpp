#include "components/temporal/explanation/OutputComponent.h"

#include "components/ComponentContainers.h"
#include "components/ContainerFiles.h"
#include "components/temporal/explanation/ExplanationRecords.h"
#include "components/temporal/explanation/ExplanationResults.h"
#include "components/temporal/explanation/StatisticsDocument.h"
#include "components/temporal/model/ModelArchive.h"
#include "components/temporal/scoring/ScoreStage.h"
#include "duckdb/DuckSession.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kResultsContainer = "Results";
constexpr const char* kResultsMember = "Results.json";
constexpr const char* kStatisticsMember = "statJson.json";

std::vector<std::string> pathsOf(const std::vector<ComponentContainer>& containers)
{
    std::vector<std::string> paths;
    paths.reserve(containers.size());
    for (const ComponentContainer& container : containers)
        paths.push_back(container.path);
    return paths;
}

/// Takes the records, if there are any, and writes the documents once all are there.
class TcmOutput : public Output
{
public:
    TcmOutput(StepCall& call, TcmModel model, NamedSeries known, ExplanationSettings settings)
        : _context(call.context), _component(call.name), _model(std::move(model)),
          _known(std::move(known)), _settings(std::move(settings)),
          _containers(outputContainers(call)), _files(call.context, pathsOf(_containers), call.name)
    {
        if (!call.inputs.empty())
            _records = explanationRecords(call.input()->fields, _model, _known, _component,
                                          _context.message);
    }

    std::string target() const override { return "the result of " + _component; }
    std::string statement(const std::string& select) override
    {
        return _records ? _records->statement(select) : select;
    }
    bool takesRecords() const override { return _records != nullptr; }
    void take(RecordBatch& batch) override { _records->take(chunkOf(batch)); }

    void commit() override
    {
        const ModelData data(_model, _records ? _records->finish() : SeriesTable());
        const PointLabels labels(_known.axis, _settings.timeOfDay);
        const Explanation explanation({&_model, _records ? &data : nullptr, &labels,
                                       _settings.isEncoded, _component,
                                       stopCheckOf(_context, _component)});
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
    TcmModel _model;
    NamedSeries _known;
    ExplanationSettings _settings;
    std::vector<ComponentContainer> _containers;
    ContainerFiles _files;
    std::unique_ptr<ExplanationRecords> _records; ///< null without an input
};

} // namespace

StepResult planTcmOutput(StepCall& call)
{
    const std::string path = modelPathOf(call);
    const ModelArchive archive(path, call.name);
    TcmModel model = archive.model();
    NamedSeries known = namedSeriesOf(
        archive.preparation(), {call.name, path, kModelPreparationEntry}, call.context.message);
    ExplanationSettings settings =
        explanationSettings(call, model, SeriesLookup(archive, model, call.name));
    NodePtr input = call.inputs.empty() ? emptyNode() : call.input();
    return {std::move(input), std::make_unique<TcmOutput>(call, std::move(model), std::move(known),
                                                          std::move(settings))};
}

} // namespace EmbeddedHV
