#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "expression/ExpressionCompiler.h"
#include "language/Ast.h"
#include "steps/JobContext.h"
#include "steps/Plan.h"
#include "steps/Settings.h"

namespace EmbeddedHV {

/// An input of a step. The input before the arrow has no tag.
struct StepInput
{
    std::string tag;
    NodePtr node;
};

/// A step with its sorted arguments and planned inputs. The planner passes it to the code of the
/// step.
struct StepCall
{
    JobContext& context;
    std::string name;
    std::vector<StepInput> inputs;
    Json configuration;                           ///< null if the text has none
    const language::Expression* lambda = nullptr; ///< steps with a lambda
    const Definitions& definitions;               ///< the definitions that a lambda may use
    Json exported = nullptr; ///< the container that the step writes; null if the text has none
    Json inputContainers = nullptr;  ///< of a component; null if the text has none
    Json outputContainers = nullptr; ///< of a component; null if the text has none
    mutable std::optional<FieldIndex> inputIndex = {}; ///< of inputField

    const NodePtr& input() const { return inputs.front().node; }
    /// The fields of the input. They are moved out of the input if no other step can use them, so
    /// that a chain does not copy them for each step. The caller must not use the input's fields
    /// afterwards.
    Fields takeFields();
    Settings settings() const { return {configuration, name}; }
    /// A field of the input. Throws JobError with the most similar name if it does not exist.
    /// `setting` is the path of the setting with the name, if there is one.
    const CFField& inputField(const std::string& field, const std::string& setting = {}) const;
};

/// The result of a step: a relation; for the last step of a statement also its output; or a stage
/// that makes a new relation from the records of this one.
struct StepResult
{
    NodePtr node;
    std::unique_ptr<Output> output;
    std::unique_ptr<Stage> stage = nullptr;
};

/// The fields with these names, in their order.
Fields chosenFields(const Fields& fields, const std::set<std::string>& names);

/// A place where a step names a field.
struct FieldUse
{
    std::string step;
    std::string owner = "the input"; ///< of the fields, in messages
    std::string setting = {};        ///< the path of the setting with the name; may be empty
};

/// The field with this name. Throws JobError with the most similar name if it does not exist.
const CFField& fieldOf(const Fields& fields, const std::string& field, const FieldUse& use);
/// Throws JobError if a field of this name exists. Ignores letter case. `setting` is the path of
/// the setting with the name, if there is one.
void refuseDuplicate(const Fields& fields, const std::string& field, const std::string& step,
                     const std::string& setting = {});

StepResult planRead(StepCall& call);
StepResult planWrite(StepCall& call);
StepResult planFilterFields(StepCall& call);
StepResult planFilterRecords(StepCall& call);
StepResult planDeriveField(StepCall& call);
StepResult planReclassifyField(StepCall& call);
StepResult planBalanceRecords(StepCall& call);
StepResult planSortRecords(StepCall& call);
StepResult planLimitRecords(StepCall& call);
StepResult planSampleRecords(StepCall& call);
StepResult planDistinctRecords(StepCall& call);
StepResult planAggregate(StepCall& call);
StepResult planJoin(StepCall& call);
StepResult planUnion(StepCall& call);
StepResult planUpdateDataModel(StepCall& call);
StepResult planDataModelBuilder(StepCall& call);
StepResult planReprojection(StepCall& call);

} // namespace EmbeddedHV
