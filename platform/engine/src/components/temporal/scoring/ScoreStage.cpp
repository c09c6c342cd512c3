#include "components/temporal/scoring/ScoreStage.h"

#include "ErrorIds.h"
#include "JobError.h"
#include "components/ComponentContainers.h"
#include "components/temporal/base/SeriesTable.h"
#include "components/temporal/scoring/ScoreSettings.h"
#include "duckdb/DuckSession.h"
#include "duckdb/NewTable.h"

namespace EmbeddedHV {
namespace {

/// For the progress: the part of the step that reading is, and how far the rest is when the series
/// are scored.
constexpr double kReadingShare = 0.2;
constexpr double kScored = 0.9;

/// The fields of the input that the series asked for need.
Fields neededFields(const Fields& input, const TcmModel& model, const ScoringRequest& request,
                    const std::string& component)
{
    Fields fields;
    const auto take = [&](const std::string& name) {
        if (const CFField* field = findField(input, name))
            fields.push_back(*field);
    };
    take(kTimeIndexField);
    for (const SeriesEquation* equation :
         ancestorEquations(model, request.series, request.by, component))
        take(model.series[equation->series].id);
    return fields;
}

/// Takes prepared records and gives their scores.
class ScoreStage : public Stage
{
public:
    ScoreStage(const StepCall& call, TcmModel model, ScoreSettings settings)
        : _context(call.context), _component(call.name), _model(std::move(model)),
          _settings(std::move(settings)),
          _needed(neededFields(call.input()->fields, _model, _settings.request, _component)),
          _reader(_needed, _component)
    {
    }

    std::string target() const override { return "the result of " + _component; }
    /// Other series of the records are not read.
    std::string statement(const std::string& select) override
    {
        return "SELECT " + columnList(_needed) + " FROM (" + select + ")";
    }
    bool takesRecords() const override { return true; }
    void take(RecordBatch& batch) override { _reader.take(chunkOf(batch)); }
    double statementShare() const override { return kReadingShare; }
    void commit() override
    {
        const Scores scores =
            score(_model, _reader.finish(), _settings.request, _component,
                  stopCheckOf(_context, _component), partOf(_context.progress, 0, kScored));
        for (const FaultParts& remark : scores.remarks)
            _context.message(errors::kScoringRemark, remark);
        fill(scores);
    }
    NodePtr records() override { return _records; }

private:
    void fill(const Scores& scores);

    JobContext& _context;
    std::string _component;
    TcmModel _model;
    ScoreSettings _settings;
    Fields _needed;
    SeriesReader _reader;
    NodePtr _records;
};

void ScoreStage::fill(const Scores& scores)
{
    std::vector<std::string> ids;
    for (const SeriesScores& series : scores.series)
        ids.push_back(_model.series[series.series].id);
    NewTable table(_context, _component, scoredFields(ids, _settings.givesActual));
    const Eigen::Index points = scores.records + _settings.request.span;
    for (Eigen::Index point = 0; point < points; ++point) {
        table.addInteger(scores.firstIndex + point);
        table.addInteger(point < scores.records ? 0 : 1);
        for (const SeriesScores& series : scores.series) {
            if (_settings.givesActual)
                table.addReal(series.actual(point));
            table.addReal(series.predicted(point));
            table.addReal(series.lower(point));
            table.addReal(series.upper(point));
        }
        table.endRecord();
        _context.progress(kScored + (1 - kScored) * fractionOf(point, points));
    }
    _records = table.finish();
}

StepResult planScoring(const StepCall& call, PredictedBy by)
{
    const ModelArchive archive(modelPathOf(call), call.name);
    TcmModel model = archive.model();
    ScoreSettings settings = scoreSettings(call, archive, model, by);
    return {call.input(), nullptr,
            std::make_unique<ScoreStage>(call, std::move(model), std::move(settings))};
}

} // namespace

Fields scoredFields(const std::vector<std::string>& ids, bool givesActual)
{
    Fields fields;
    fields.emplace_back(kTimeIndexField, CFField::Ordinal, CFField::Integer);
    fields.emplace_back(kFutureFlagField, CFField::Nominal, CFField::Integer);
    for (const std::string& id : ids) {
        if (givesActual)
            fields.emplace_back(id, CFField::Continuous, CFField::Real);
        for (const char* ending : {"_predicted", "_lower", "_upper"})
            fields.emplace_back(id + ending, CFField::Continuous, CFField::Real);
    }
    return fields;
}

std::string modelPathOf(const StepCall& call)
{
    const std::vector<ComponentContainer> containers = inputContainers(call);
    if (containers.size() != 1)
        throw JobError(errors::kSettingType,
                       {.step = call.name,
                        .what = std::to_string(containers.size()) +
                                " input containers are given, not one with the model"});
    return containers.front().path;
}

StepResult planTcmScore(StepCall& call)
{
    return planScoring(call, PredictedBy::Causes);
}

StepResult planTcmAr(StepCall& call)
{
    return planScoring(call, PredictedBy::OwnPast);
}

} // namespace EmbeddedHV
