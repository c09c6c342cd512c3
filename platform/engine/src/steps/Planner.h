#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "language/Ast.h"
#include "steps/StepTable.h"

namespace EmbeddedHV {

/// Converts a program to planned statements. Resolves names and checks steps as each statement
/// needs them. Runs nothing, but looks into files for their fields.
class Planner
{
public:
    /// Borrows the program and the context. Checks all names and steps of the text, used or not.
    /// Throws JobError.
    Planner(const language::Program& program, JobContext& context, ComponentLookup components);

    std::size_t statementCount() const { return _statements.size(); }
    /// Throws JobError, NotYetWritten if the statement reads the output of an earlier statement
    /// that has not run yet, and StageFirst.
    Statement planStatement(std::size_t index);
    /// Keeps the records of a stage that has run. Its step then counts as planned.
    void keepStage(const Statement& stage);
    /// Drops all plans except chains and stages that are tables already, and returns the names of
    /// these tables. Their records must not be read a second time.
    std::set<std::string> forgetPlans();

private:
    using StagedRecords = std::map<const language::Step*, NodePtr>;

    void bindNames();
    void checkSteps(const language::Pipeline& pipeline);
    void checkCycles();
    void visit(const std::string& name, std::set<std::string>& open, std::set<std::string>& done);
    void countUses(const language::Pipeline& pipeline);
    void countIterator(const language::Step& step);

    Statement statementOf(StepResult result, std::string steps);
    StepResult planPipeline(const language::Pipeline& pipeline);
    std::vector<language::Step>::const_iterator firstUnstaged(const language::Pipeline& pipeline,
                                                              NodePtr& records) const;
    [[noreturn]] void runFirst(Statement stage, Stage* made, const language::Step& step);
    void moveInputs(const language::Step& step, const StepKind& kind, StepCall& call);
    [[noreturn]] void collectFirst(const language::Step& step, const StepKind& kind,
                                   StepCall& call);
    NodePtr sentRecords(const NodePtr& local, const std::string& step);
    StepResult planStep(const language::Step& step, NodePtr input);
    void gatherInputs(const language::Step& step, NodePtr input, StepCall& call);
    void readArguments(const language::Step& step, const StepKind& kind, StepCall& call);
    const language::Expression* lambdaOf(const language::Expression& argument,
                                         const std::string& step) const;
    NodePtr planChain(const std::string& name, const std::string& step);
    const language::Pipeline& chainOf(const std::string& name) const;
    /// The tag and the chain of an argument that is an input: `tag: name`, or only the name of a
    /// chain, which is then also the tag. Empty for other arguments.
    std::pair<std::string, std::string> inputIn(const language::Argument& argument) const;
    std::vector<std::string> chainsIn(const language::Pipeline& pipeline) const;

    const language::Program& _program;
    JobContext& _context;
    ComponentLookup _components;
    std::vector<const language::Pipeline*> _statements;
    std::map<std::string, const language::Pipeline*> _chains;
    Definitions _values;
    std::map<std::string, int> _uses;          ///< of chains
    std::map<std::string, int> _iteratorReads; ///< of row iterators
    std::map<std::string, NodePtr> _planned;   ///< chains that are planned
    StagedRecords _staged;                     ///< the results of stages that have run
    StagedRecords _collected;                  ///< inputs of components that stages have collected
    std::map<NodePtr, NodePtr> _sent; ///< local relations and what the cluster gets of them
};

} // namespace EmbeddedHV
