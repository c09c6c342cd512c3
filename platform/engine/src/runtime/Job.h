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

/// Runs the statements of a job in order. As many statements as possible are planned before the
/// first of them runs, so that a mistake anywhere shows before a file is written.
class Job
{
public:
    /// All are borrowed.
    Job(JobContext& context, Reporter& reporter, Cancellation& cancellation)
        : _context(context), _reporter(reporter), _cancellation(cancellation)
    {
    }

    /// Throws JobError, JobCancelled, and what row iterators and containers throw.
    void run(const std::string& text);

private:
    std::vector<Statement> planAhead(Planner& planner, std::size_t from);
    void runStatement(Statement& statement);
    /// Gives all that the statement has written its names, or nothing of it.
    void commit(Statement& statement);
    /// The FROM item of a node, and its SELECT; the tables that they name are made before.
    static std::string render(const Node& node);
    static std::string selectOf(const Node& node);
    static std::vector<std::string> inputsOf(const Node& node);
    /// Makes the table of a node that is used more than once.
    void evaluate(Node& node, const Statement& statement);

    /// `taker` is the output that takes the records that the SQL gives; null if it gives none that
    /// anyone wants.
    void execute(const std::string& sql, Node& node, const Statement& statement, Output* taker);
    void runSql(const std::string& sql, bool keepsNothing, Output* taker);
    void explainFailure(const duck::QueryError& error, const std::vector<SourceCheck*>& checks,
                        const Statement& statement);
    /// Makes way for another plan of what has not run yet.
    void startOver(Planner& planner);
    void throwIfCancelled() const;

    JobContext& _context;
    Reporter& _reporter;
    Cancellation& _cancellation;
    std::size_t _statements = 1;
    std::size_t _done = 0;
};

} // namespace EmbeddedHV
