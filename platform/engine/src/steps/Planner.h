#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "language/Ast.h"
#include "steps/StepTable.h"

namespace EmbeddedHV {

/// Turns a program into planned statements. Names are resolved and steps checked as a statement
/// needs them; nothing runs here, though files are looked into for their fields.
class Planner
{
public:
    /// The program and the context are borrowed. Checks all names and steps of the text, used or
    /// not. Throws JobError.
    Planner(const language::Program& program, JobContext& context);

    std::size_t statementCount() const { return _statements.size(); }
    /// Throws JobError, NotYetWritten if the statement reads what an earlier one is to write, and
    /// StageFirst.
    Statement planStatement(std::size_t index);
    /// Keeps the records of a stage that has run; the step counts as planned from now on.
    void keepStage(const Statement& stage);
    /// Forgets what was planned but for chains and stages that are tables by now, whose names it
    /// gives: their records have been read once, and are not to be read again.
    std::set<std::string> forgetPlans();

private:
    void bindNames();
    void checkSteps(const language::Pipeline& pipeline);
    void checkCycles();
    void visit(const std::string& name, std::set<std::string>& open, std::set<std::string>& done);
    void countUses(const language::Pipeline& pipeline);
    void countIterator(const language::Step& step);

    Statement statementOf(StepResult result, std::string steps);
    StepResult planPipeline(const language::Pipeline& pipeline);
    [[noreturn]] void runFirst(StepResult stage, const language::Step& step,
                               const std::string& steps);
    StepResult planStep(const language::Step& step, NodePtr input);
    void gatherInputs(const language::Step& step, NodePtr input, StepCall& call);
    void readArguments(const language::Step& step, const StepKind& kind, StepCall& call);
    const language::Expression* lambdaOf(const language::Expression& argument,
                                         const std::string& step) const;
    NodePtr planChain(const std::string& name, const std::string& step);
    const language::Pipeline& chainOf(const std::string& name) const;
    /// The chain that an argument stands for, with its tag: `tag: name`, or a bare name of a chain,
    /// which is its own tag. An empty name for any other argument.
    std::pair<std::string, std::string> inputIn(const language::Argument& argument) const;
    std::vector<std::string> chainsIn(const language::Pipeline& pipeline) const;

    const language::Program& _program;
    JobContext& _context;
    std::vector<const language::Pipeline*> _statements;
    std::map<std::string, const language::Pipeline*> _chains;
    Definitions _values;
    std::map<std::string, int> _uses;                 ///< of chains, by what runs
    std::map<std::string, int> _iteratorReads;        ///< likewise
    std::map<std::string, NodePtr> _planned;          ///< chains
    std::map<const language::Step*, NodePtr> _staged; ///< the records of stages that have run
};

} // namespace EmbeddedHV
