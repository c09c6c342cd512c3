#include "service/Job.h"

#include "ErrorIds.h"
#include "components/table/ComponentTable.h"
#include "language/Parser.h"
#include "runtime/QueryFaults.h"
#include "steps/DataModelExport.h"

namespace EmbeddedHV {
namespace {

/// Of the work of a component: at most a hundred calls of the listener.
constexpr double kProgressStep = 0.01;

/// Of a statement, if its sources are prepared first.
constexpr double kPreparingShare = 0.5;

/// Collects the checks of all sources that a SELECT on the node reads.
void gatherChecks(const Node& node, std::vector<SourceCheck*>& checks)
{
    // Its records are in a table and are already checked.
    if (!node.table.empty())
        return;
    if (node.check)
        checks.push_back(node.check.get());
    for (const NodePtr& input : node.inputs)
        gatherChecks(*input, checks);
}

} // namespace

void Job::throwIfCancelled() const
{
    if (_cancellation.cancelled())
        throw JobCancelled{};
}

void Job::report(double part)
{
    _reporter.progress((static_cast<double>(_done) + _begin + _share * part) /
                       static_cast<double>(_statements));
}

void Job::run(const std::string& text)
{
    throwIfCancelled();
    const language::Program program = language::parseProgram(text);
    Planner planner(program, _context, componentKind);
    // Errors of the text need no backend.
    _context.session->open(&_cancellation);
    throwIfCancelled();
    _statements = planner.statementCount();
    if (_statements == 0)
        _reporter.message(errors::kNoStatement,
                          {.what = "the job has no statement, so nothing was done"});
    while (_done < _statements) {
        std::vector<Statement> batch = planAhead(planner, _done);
        try {
            for (Statement& statement : batch) {
                // The number of stages is not known before: each is half of what is left.
                _share = (1 - _begin) / (statement.stage ? 2 : 1);
                runStatement(statement);
                if (statement.stage) {
                    planner.keepStage(statement);
                    _begin += _share;
                    continue;
                }
                report(1);
                ++_done;
                _begin = 0;
            }
        } catch (const Reread&) {
            batch.clear();
            startOver(planner);
        }
    }
    for (const auto& [name, input] : _context.iteratorInputs)
        if (input.source)
            for (const FaultParts& remark : input.source->remarks())
                _reporter.message(errors::kTimeDropped, remark);
}

std::vector<Statement> Job::planAhead(Planner& planner, std::size_t from)
{
    std::vector<Statement> batch;
    for (std::size_t i = from; i < _statements; ++i) {
        throwIfCancelled();
        try {
            batch.push_back(planner.planStatement(i));
        } catch (const NotYetWritten&) {
            // The remaining statements are planned after the earlier ones have written.
            break;
        } catch (const StageFirst& first) {
            // Its inputs may be outputs of earlier statements that have not run yet.
            if (batch.empty())
                batch.push_back(std::move(*first.stage));
            break;
        }
    }
    throwIfCancelled();
    return batch;
}

void Job::startOver(Planner& planner)
{
    // Unfinished tables have the types of the old plan. Tables of finished chains were checked, but
    // their sources may have changed.
    _context.dropTables(planner.forgetPlans());
    _context.unwritten.clear();
}

void Job::runStatement(Statement& statement)
{
    // Now, because an output may begin to write before the SQL runs.
    _cancellation.resume();
    _context.session->keepOrder(true);
    for (Node* node : inputsFirst(*statement.result, Walk::UpToTables))
        if (node->shared && node->table.empty())
            evaluate(*node, statement);
    Output* const output = statement.output.get();
    // Other outputs are folders and tables of the backend.
    _context.session->keepOrder(output && output->takesRecords());
    const std::string select = selectOf(*statement.result);
    _statementShare = output ? output->statementShare() : 1;
    execute(output ? output->statement(select) : select, *statement.result, statement,
            output && output->takesRecords() ? output : nullptr);
    commit(statement);
}

void Job::commit(Statement& statement)
{
    // If several statements use a chain, the first one has already exported its model.
    std::erase_if(statement.exports, [](const auto& document) { return document->isCommitted(); });
    // Before the files get their names: nothing may fail after that.
    std::vector<std::string> written;
    for (const auto& document : statement.exports)
        written.push_back(canonicalPath(document->path()));
    try {
        for (const auto& document : statement.exports)
            document->commit();
        if (statement.output)
            commit(*statement.output);
    } catch (...) {
        for (const auto& document : statement.exports)
            document->revoke();
        throw;
    }
    for (const std::string& path : written)
        _context.unwritten.erase(path);
}

void Job::commit(Output& output)
{
    _context.progress = [this, next = 0.0](double part) mutable {
        if (part < next)
            return;
        next = part + kProgressStep;
        report(_statementShare + (1 - _statementShare) * part);
    };
    output.commit();
}

std::string Job::selectOf(const Node& node) const
{
    if (node.shared)
        return "SELECT * FROM " + render(node);
    return node.select(inputsOf(node));
}

std::string Job::render(const Node& node) const
{
    return node.shared ? _context.sessionOf(node).recordsOf(node.table, node.fields)
                       : "(" + selectOf(node) + ")";
}

std::vector<std::string> Job::inputsOf(const Node& node) const
{
    std::vector<std::string> inputs;
    for (const NodePtr& input : node.inputs)
        inputs.push_back(render(*input));
    return inputs;
}

void Job::evaluate(Node& node, const Statement& statement)
{
    const std::string table = _context.newTable("hv_chain_");
    Session& session = _context.sessionOf(node);
    const std::string name = session.tableName(table, TableOwner::Job);
    execute(session.dialect().newTemporaryTable(name, node.select(inputsOf(node))), node, statement,
            nullptr);
    node.table = table;
}

void Job::execute(const std::string& sql, Node& node, const Statement& statement, Output* taker)
{
    throwIfCancelled();
    Session& session = _context.sessionOf(node);
    std::vector<SourceCheck*> checks;
    gatherChecks(node, checks);
    tellChecksWhatIsRead(node);
    for (SourceCheck* check : checks)
        check->start(_cancellation, [this](double part) {
            report(_statementShare * kPreparingShare * std::max(part, _context.readShare()));
        });
    try {
        runSql(session, sql, !statement.output, taker);
    } catch (const StatementFault& fault) {
        explainFailure(fault, checks, statement);
    }
    for (SourceCheck* check : checks)
        check->finish(session, _reporter);
    // An iterator that saw the cancellation ended early, so the result is incomplete.
    throwIfCancelled();
}

void Job::runSql(Session& session, const std::string& sql, bool keepsNothing, Output* taker)
{
    // The embedded database does not know how far an iterator is. For a cluster, iterators are read
    // before the statement.
    const auto progress = [this](double part) {
        const double read = _context.isRemote() ? 0 : _context.readShare();
        report(_statementShare * std::max(part, read));
    };
    if (!keepsNothing && !taker) {
        session.run(sql, _cancellation, progress);
        return;
    }
    const auto take = [&](RecordBatch& batch) {
        throwIfCancelled();
        if (taker)
            taker->take(batch);
    };
    if (taker && taker->hasLargeRecords())
        session.streamLarge(sql, _cancellation, progress, take);
    else
        session.stream(sql, _cancellation, progress, take);
}

void Job::explainFailure(const StatementFault& fault, const std::vector<SourceCheck*>& checks,
                         const Statement& statement)
{
    throwIfCancelled();
    for (const auto& [name, input] : _context.iteratorInputs)
        if (input.source && input.source->failure())
            throw JobError(*input.source->failure());
    for (SourceCheck* check : checks)
        check->abandon(fault);
    throwIfCancelled();
    const Output* const output = statement.output.get();
    throw faultOf(fault, statement.steps, output ? output->target() : std::string(),
                  output && output->writesFile());
}

} // namespace EmbeddedHV
