#pragma once

#include <string>
#include <vector>

#include "language/Ast.h"
#include "runtime/Reporter.h"
#include "steps/JobContext.h"
#include "steps/Planner.h"

namespace EmbeddedHV {

/// Thrown inside a job when it is cancelled.
struct JobCancelled
{
};

/// Runs the statements of a job in order. Plans as many statements as possible before the first one
/// runs, so that errors are found before a file is written.
class Job
{
public:
    /// Borrows all arguments.
    Job(JobContext& context, Reporter& reporter, Cancellation& cancellation)
        : _context(context), _reporter(reporter), _cancellation(cancellation)
    {
    }

    /// Throws JobError, JobCancelled, and the exceptions of row iterators and containers.
    void run(const std::string& text);

private:
    std::vector<Statement> planAhead(Planner& planner, std::size_t from);
    void runStatement(Statement& statement);
    /// Gives all outputs of the statement their final names, or none.
    void commit(Statement& statement);
    /// The same for one output, whose progress it reports.
    void commit(Output& output);
    /// The FROM item of a node. The tables that it names already exist.
    std::string render(const Node& node) const;
    /// The SELECT of a node. The tables that it names already exist.
    std::string selectOf(const Node& node) const;
    std::vector<std::string> inputsOf(const Node& node) const;
    /// Creates the table of a node that is used more than once.
    void evaluate(Node& node, const Statement& statement);

    /// `taker` is the output that receives the records of the SQL. It is null if the SQL returns no
    /// records, or if nobody needs them.
    void execute(const std::string& sql, Node& node, const Statement& statement, Output* taker);
    void runSql(Session& session, const std::string& sql, bool keepsNothing, Output* taker);
    void explainFailure(const StatementFault& fault, const std::vector<SourceCheck*>& checks,
                        const Statement& statement);
    /// Prepares a new plan of the statements that have not run yet.
    void startOver(Planner& planner);
    void throwIfCancelled() const;
    /// Reports the finished fraction of the running statement or stage.
    void report(double part);

    JobContext& _context;
    Reporter& _reporter;
    Cancellation& _cancellation;
    std::size_t _statements = 1;
    std::size_t _done = 0;
    double _begin = 0;          ///< the part of the next statement that its finished stages are
    double _share = 1;          ///< the part of it that the running statement or stage is
    double _statementShare = 1; ///< Output::statementShare of the running statement
};

} // namespace EmbeddedHV
