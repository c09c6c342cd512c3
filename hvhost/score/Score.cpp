#include "hvhost/score/Score.h"

#include <iostream>
#include <memory>
#include <utility>

#include "CFMetaData.h"
#include "CFUpperFuncImpl.h"
#include "EngineException.h"
#include "RowDataIterator.h"
#include "bridge/JNIHvlProgram.h"
#include "bridge/JNIObjectManager.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/base/ReadableFile.h"
#include "hvhost/input/Dataset.h"
#include "hvhost/input/InputFile.h"
#include "hvhost/job/HostSession.h"
#include "hvhost/job/RecordChain.h"
#include "hvhost/score/ScoredTable.h"
#include "hvhost/score/ScoringModel.h"
#include "hvhost/show/OutputShown.h"
#include "hvhost/show/ShownResult.h"
#include "hvhost/show/TextTable.h"
#include "hvl/HVLWrite.h"
#include "runner/HVRunner.h"
#include "scoring/HVTransformScorer.h"
#include "support/HVSimpleFile.h"

namespace {

/// Disposes the rows of a job's output.
struct DisposeRows
{
    void operator()(EmbeddedHV::RowDataIterator* rows) const
    {
        rows->dispose(JNIObjectManager::getManager()->getEnv());
    }
};
using OutputRows = std::unique_ptr<EmbeddedHV::RowDataIterator, DisposeRows>;

/// Without a form, the rows are csv, for programs.
std::string scoredForm(const ScoreOptions& options)
{
    const std::string form =
        formOf(options.shown.format, options.shown.output, {"csv", "json", "txt"});
    if (form == "txt")
        return "text";
    return options.shown.format.empty() && form == "text" ? "csv" : form;
}

/// The rows of one command and the model that scores them.
class Scoring
{
public:
    Scoring(const ScoreOptions& options, TableLook look, const ScoringModel& model,
            const InterruptWatch& watch)
        : _options(options), _look(std::move(look)), _model(model),
          _targets(model.targets(options.targets)), _watch(watch)
    {
    }

    /// Checks the inputs before the job runs, as far as possible: a step may add inputs of the
    /// model.
    void check(const InputFile& input) const
    {
        if (!input.dataset() || !_options.records.derivations.empty())
            return;
        _model.checkInputs(CFMetaData(input.rows()->getDataModel(), &_upper), _options.input.path);
    }

    void show(EmbeddedHV::RowDataIterator& rows, const ShownResult& result, HostSession& session)
    {
        const CFMetaData fields(rows.getDataModel(), &_upper);
        _model.checkInputs(fields, _options.input.path);
        ScoredTable table(rows, fields, _options.keep, _targets);
        HVTransformScorer scorer;
        if (!scorer.PrepareScoring(&rows, _model.text(), targetNames(), true))
            throw CommandFault(ExitStatus::JobFailed, "the model does not fit the rows");
        result.deliver([&](std::ostream& out) { table.write(scorer, _look, _watch, out); });
        if (const std::string rounded = table.roundedText(); !rounded.empty())
            session.warn(rounded);
        if (table.failedCount() > 0)
            session.warn(std::to_string(table.failedCount()) + " of " +
                         std::to_string(table.rowCount()) +
                         " rows have results that are not valid, which are left empty");
    }

private:
    std::vector<std::string> targetNames() const
    {
        std::vector<std::string> names;
        for (const ScoringModel::Variable& target : _targets)
            names.push_back(target.name);
        return names;
    }

    const ScoreOptions& _options;
    TableLook _look;
    const ScoringModel& _model;
    std::vector<ScoringModel::Variable> _targets;
    const InterruptWatch& _watch;
    CFUpperFuncImpl _upper;
};

} // namespace

void score(const ScoreOptions& options, const CommonOptions& common)
{
    const InterruptWatch watch(common.timeout);
    const ShownResult result(options.shown.output, options.shown.force, watch);
    const std::string form = scoredForm(options);
    const TableLook look{form, textForm(options.shown.text, form, result.isFile())};
    const ReadableFile file(options.model, watch);
    const ScoringModel model(file);
    Scoring scoring(options, look, model, watch);
    const InputOptions reading = limitedReading(options.input, options.records);
    const InputFile input(reading, FileOptions::Offered, watch);
    scoring.check(input);
    HostSession session("score", common, watch);
    JNIHvlProgram program;
    RecordChain records(program, input, options.records);
    const HVSimpleFile scratch("score.hvbf", true, true);
    HVLWrite write(&program);
    write.WriteHVBF(scratch.GetFileName());
    write.AddPredFunction(records.last());
    const std::string job = generateJob(program, write);
    if (options.printJob) {
        std::cout << job << '\n';
        return;
    }
    JobOrigin origin = input.origin();
    origin.expressions = records.expressions();
    session.introduce(input);
    session.run(job, origin, input.rows());
    const OutputRows rows(session.runner().getOutputIterator(scratch.GetFileName()));
    if (!rows)
        throw CommandFault(ExitStatus::JobFailed, "the rows of the job cannot be read");
    scoring.show(*rows, result, session);
    input.finish();
    session.finish();
}
