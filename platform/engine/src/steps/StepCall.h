#pragma once

#include <memory>
#include <string>
#include <vector>

#include "expression/ExpressionCompiler.h"
#include "language/Ast.h"
#include "steps/JobContext.h"
#include "steps/Plan.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// An input of a step. The one that comes over the arrow has no tag.
struct StepInput
{
    std::string tag;
    NodePtr node;
};

/// One step as the planner hands it to the step's own code, arguments sorted and inputs planned.
struct StepCall
{
    JobContext& context;
    std::string name;
    std::vector<StepInput> inputs;
    Json configuration;                           ///< null if the text has none
    const language::Expression* lambda = nullptr; ///< steps with a lambda
    const Definitions& definitions;               ///< what a lambda may name
    Json exported = nullptr; ///< the container that the step writes; null if the text has none
    Json inputContainers = nullptr;  ///< of a component; null if the text has none
    Json outputContainers = nullptr; ///< likewise

    const NodePtr& input() const { return inputs.front().node; }
    /// The fields of the input, for a step that goes on with them. They are moved out where no
    /// other step can ask for them, so that a chain of steps does not keep a copy for each; the
    /// caller needs the input's fields no more.
    Fields takeFields();
    Settings settings() const { return {configuration, name}; }
    /// The field of the input; throws JobError with the nearest name if there is none.
    const CFField& inputField(const std::string& field) const;
};

/// What a step makes: a relation, or for the last step of a statement the place it writes to, or a
/// stage that takes the records of the relation and makes another one.
struct StepResult
{
    NodePtr node;
    std::unique_ptr<Output> output;
    std::unique_ptr<Stage> stage = nullptr;
};

/// The field of that name; throws JobError that suggests the nearest name. `owner` is how the
/// message begins, "filterFields: the input".
const CFField& fieldOf(const Fields& fields, const std::string& field, const std::string& owner);
/// Throws JobError if a field of that name, letter case apart, is there already.
void refuseDuplicate(const Fields& fields, const std::string& field, const std::string& step);

StepResult planRead(StepCall& call);
StepResult planWrite(StepCall& call);
StepResult planFilterFields(StepCall& call);
StepResult planFilterRecords(StepCall& call);
StepResult planDeriveField(StepCall& call);
StepResult planReclassifyField(StepCall& call);
StepResult planBalanceRecords(StepCall& call);
StepResult planAggregate(StepCall& call);
StepResult planJoin(StepCall& call);
StepResult planUnion(StepCall& call);
StepResult planUpdateDataModel(StepCall& call);
StepResult planDataModelBuilder(StepCall& call);
StepResult planReprojection(StepCall& call);

} // namespace EmbeddedHV
