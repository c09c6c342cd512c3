#include "steps/Planner.h"

#include <utility>
#include <variant>

#include "ErrorIds.h"
#include "JobError.h"
#include "base/NearestName.h"
#include "base/ScopeExit.h"
#include "language/Parser.h"
#include "language/TextCursor.h"
#include "steps/ArgumentReader.h"
#include "steps/DataModelExport.h"

namespace EmbeddedHV {
namespace {

/// Chains that use chains are followed recursively.
constexpr std::size_t kMostNestedChains = 1000;

/// The name of a statement in messages: its steps with arrows between them.
std::string stepsOf(const language::Pipeline& pipeline)
{
    std::string steps = pipeline.input;
    for (const language::Step& step : pipeline.steps)
        steps += (steps.empty() ? "" : " -> ") + step.fullName();
    return steps;
}

} // namespace

Planner::Planner(const language::Program& program, JobContext& context, ComponentLookup components)
    : _program(program), _context(context), _components(components),
      _values(language::boundValues(program))
{
    bindNames();
    checkCycles();
    for (const language::Pipeline* statement : _statements)
        countUses(*statement);
    for (const auto& [name, reads] : _iteratorReads)
        if (reads > 1)
            _context.sharedIterators.insert(name);
}

/// Distinguishes chains, values and statements. Checks that all steps exist before any is planned,
/// so that an invalid job is rejected as a whole.
void Planner::bindNames()
{
    std::set<std::string> bound;
    for (const auto& item : _program.items) {
        if (const auto* statement = std::get_if<language::Pipeline>(&item)) {
            _statements.push_back(statement);
            continue;
        }
        const auto& definition = std::get<language::Definition>(item);
        if (!bound.insert(definition.name).second)
            language::failAt(definition.position,
                             "the name \"" + definition.name + "\" is bound already",
                             errors::kNameBoundTwice, {.name = definition.name});
        if (const auto* chain = std::get_if<language::Pipeline>(&definition.value))
            _chains.emplace(definition.name, chain);
    }
    for (const auto& [name, chain] : _chains)
        checkSteps(*chain);
    for (const language::Pipeline* statement : _statements)
        checkSteps(*statement);
}

void Planner::checkSteps(const language::Pipeline& pipeline)
{
    for (const language::Step& step : pipeline.steps) {
        stepKind(step, _components);
        if (step.nameSpace.empty() && step.name == "reprojection")
            _context.require(Feature::Maps, step.name);
    }
    for (const std::string& name : chainsIn(pipeline))
        chainOf(name);
}

const language::Pipeline& Planner::chainOf(const std::string& name) const
{
    if (const auto found = _chains.find(name); found != _chains.end())
        return *found->second;
    if (_values.contains(name))
        throw JobError(
            errors::kNameKind,
            {.name = name,
             .what = "\"" + name + "\" is a value, not a chain that a step can take records from"});
    const std::string suggestion =
        base::suggestion(name, _chains, &decltype(_chains)::value_type::first);
    throw JobError(errors::kUnknownName,
                   {.name = name,
                    .hasSuggestion = !suggestion.empty(),
                    .what = "there is no chain \"" + name + "\"" + suggestion});
}

/// The tag and the chain of an argument that is an input; empty for other arguments. The name of a
/// chain as a value is an input whose tag is the name.
std::pair<std::string, std::string> Planner::inputIn(const language::Argument& argument) const
{
    if (argument.kind == language::Argument::Kind::Tagged)
        return {argument.tag, argument.input};
    if (argument.kind == language::Argument::Kind::Value)
        if (const auto* name = std::get_if<language::Name>(&argument.value->value);
            name && _chains.contains(name->name))
            return {name->name, name->name};
    return {};
}

std::vector<std::string> Planner::chainsIn(const language::Pipeline& pipeline) const
{
    std::vector<std::string> names;
    if (!pipeline.input.empty())
        names.push_back(pipeline.input);
    for (const language::Step& step : pipeline.steps)
        for (const language::Argument& argument : step.arguments)
            if (auto input = inputIn(argument); !input.second.empty())
                names.push_back(std::move(input.second));
    return names;
}

void Planner::checkCycles()
{
    std::set<std::string> open;
    std::set<std::string> done;
    for (const auto& [name, chain] : _chains)
        visit(name, open, done);
}

/// Depth first. A chain that is visited while it is open uses itself.
void Planner::visit(const std::string& name, std::set<std::string>& open,
                    std::set<std::string>& done)
{
    if (done.contains(name))
        return;
    const language::Pipeline& chain = chainOf(name);
    if (!open.insert(name).second)
        language::failAt(chain.position, "the chain \"" + name + "\" uses itself", errors::kCycle,
                         {.name = name});
    if (open.size() > kMostNestedChains)
        language::failAt(chain.position, "the chain \"" + name + "\" is nested too deep",
                         errors::kLiteralSize, {.name = name, .limit = kMostNestedChains});
    for (const std::string& input : chainsIn(chain))
        visit(input, open, done);
    open.erase(name);
    done.insert(name);
}

/// Counts the uses of chains and iterators. A chain with several uses is planned once and its
/// records are kept. An iterator can be read only once.
void Planner::countUses(const language::Pipeline& pipeline)
{
    for (const language::Step& step : pipeline.steps)
        countIterator(step);
    for (const std::string& name : chainsIn(pipeline))
        if (++_uses[name] == 1)
            countUses(chainOf(name));
}

void Planner::countIterator(const language::Step& step)
{
    if (step.name != "read" || _context.iterators.empty())
        return;
    StepCall call{_context, step.fullName(), {}, nullptr, nullptr, _values};
    readArguments(step, stepKind(step, _components), call);
    if (call.configuration.is_object())
        if (const auto name = call.settings().text("dataSource"))
            ++_iteratorReads[*name];
}

Statement Planner::planStatement(std::size_t index)
{
    const language::Pipeline& pipeline = *_statements[index];
    return statementOf(planPipeline(pipeline), stepsOf(pipeline));
}

Statement Planner::statementOf(StepResult result, std::string steps)
{
    Statement statement{std::move(result.node), std::move(result.output), std::move(steps), {}};
    statement.exports = exportsOf(*statement.result);
    checkTargets(statement);
    // Announced after planning: a statement that reads a document of this name reads the old one.
    for (const auto& document : statement.exports)
        _context.announce(document->path(), statement.steps);
    return statement;
}

void Planner::runFirst(Statement stage, Stage* made, const language::Step& step)
{
    auto statement = std::make_shared<Statement>(std::move(stage));
    statement->stagedStep = &step;
    statement->stage = made;
    throw StageFirst{std::move(statement)};
}

void Planner::keepStage(const Statement& stage)
{
    (stage.stagesInput ? _collected : _staged)[stage.stagedStep] = stage.stage->records();
}

std::set<std::string> Planner::forgetPlans()
{
    std::set<std::string> tables;
    for (const StagedRecords* stages : {&_staged, &_collected})
        for (const auto& [step, records] : *stages)
            tables.insert(records->table);
    std::erase_if(_planned, [&tables](const auto& chain) {
        const bool evaluated = chain.second && !chain.second->table.empty();
        if (evaluated)
            tables.insert(chain.second->table);
        return !evaluated;
    });
    return tables;
}

StepResult Planner::planPipeline(const language::Pipeline& pipeline)
{
    StepResult result;
    std::string before;
    auto step = firstUnstaged(pipeline, result.node);
    if (!result.node && !pipeline.input.empty())
        result.node = planChain(pipeline.input, pipeline.steps.front().fullName());
    for (; step != pipeline.steps.end(); ++step) {
        if (result.output)
            throw JobError(errors::kStepInput,
                           {.step = step->fullName(),
                            .what = "nothing can follow " + before + ", which gives no records"});
        result = planStep(*step, std::move(result.node));
        before = step->fullName();
        if (result.stage) {
            Stage* const stage = result.stage.get();
            runFirst(statementOf({std::move(result.node), std::move(result.stage)}, before), stage,
                     *step);
        }
    }
    return result;
}

/// The first step to be planned: the steps before a finished stage are not planned again. Sets
/// `records` to those of the stage.
std::vector<language::Step>::const_iterator
Planner::firstUnstaged(const language::Pipeline& pipeline, NodePtr& records) const
{
    for (auto step = pipeline.steps.end(); step != pipeline.steps.begin();) {
        --step;
        if (const auto found = _staged.find(&*step); found != _staged.end()) {
            records = found->second;
            return std::next(step);
        }
        if (const auto found = _collected.find(&*step); found != _collected.end()) {
            records = found->second;
            return step;
        }
    }
    return pipeline.steps.begin();
}

/// Plans a chain when it is first used.
NodePtr Planner::planChain(const std::string& name, const std::string& step)
{
    NodePtr& planned = _planned[name];
    if (planned)
        return planned;
    const language::Pipeline& chain = chainOf(name);
    StepResult result = planPipeline(chain);
    if (result.output)
        throw JobError(errors::kStepInput,
                       {.step = step,
                        .what = "the chain \"" + name + "\" ends in " +
                                chain.steps.back().fullName() + ", which gives no records"});
    planned = std::move(result.node);
    planned->shared = planned->shared || _uses[name] > 1;
    return planned;
}

StepResult Planner::planStep(const language::Step& step, NodePtr input)
{
    const StepKind& kind = stepKind(step, _components);
    StepCall call{_context, step.fullName(), {}, nullptr, nullptr, _values};
    // A chain may have many steps. After a cancellation the job ends with onCancel whatever the
    // error.
    if (_context.cancellation && _context.cancellation->cancelled())
        throw JobError(errors::kQueryFailed, {.step = call.name, .what = "the job was stopped"});
    gatherInputs(step, std::move(input), call);
    const std::size_t inputs = call.inputs.size();
    if (kind.inputs == StepInputs::None && inputs > 0)
        throw JobError(errors::kStepInput,
                       {.step = call.name,
                        .what = "the step makes records and takes none from a step before it"});
    const bool needsInput = kind.inputs == StepInputs::One || kind.inputs == StepInputs::Tagged;
    if (needsInput && inputs == 0)
        throw JobError(errors::kStepInput, {.step = call.name, .what = "the step has no input"});
    if (kind.inputs != StepInputs::Tagged && inputs > 1)
        throw JobError(
            errors::kStepInput,
            {.step = call.name, .what = "the step takes one input, not " + std::to_string(inputs)});
    readArguments(step, kind, call);
    if (!_context.isRemote())
        return kind.plan(call);
    moveInputs(step, kind, call);
    StepResult result = kind.plan(call);
    // A component computes on the embedded database, also if it has no input.
    result.node->isLocal = result.node->isLocal || !step.nameSpace.empty();
    return result;
}

/// Components compute on the embedded database, and all other steps on the cluster. So records move
/// before a step that finds them in the wrong place.
void Planner::moveInputs(const language::Step& step, const StepKind& kind, StepCall& call)
{
    const bool isComponent = !step.nameSpace.empty();
    for (StepInput& input : call.inputs) {
        if (isComponent && !input.node->isLocal && _context.plansOnly)
            input.node = _context.localTable(input.node->fields, "hv_collected");
        else if (isComponent && !input.node->isLocal)
            collectFirst(step, kind, call);
        if (!isComponent && input.node->isLocal)
            input.node = sentRecords(input.node, call.name);
    }
}

void Planner::collectFirst(const language::Step& step, const StepKind& kind, StepCall& call)
{
    Fields fields;
    if (kind.fieldsRead) {
        // The component sends its messages when it is planned.
        MessageSink message = std::exchange(_context.message, [](auto&&...) {});
        const base::ScopeExit restore([&] { _context.message = std::move(message); });
        fields = kind.fieldsRead(call);
    }
    if (fields.empty())
        fields = call.input()->fields;
    auto stage = _context.dataFiles->collection(_context, call.name, fields);
    Stage* const made = stage.get();
    Statement statement = statementOf({call.input(), std::move(stage)}, call.name);
    statement.stagesInput = true;
    runFirst(std::move(statement), made, step);
}

NodePtr Planner::sentRecords(const NodePtr& local, const std::string& step)
{
    NodePtr& sent = _sent[local];
    if (!sent)
        sent = _context.dataFiles->sent(local, step);
    return sent;
}

void Planner::gatherInputs(const language::Step& step, NodePtr input, StepCall& call)
{
    if (input)
        call.inputs.push_back({"", std::move(input)});
    for (const language::Argument& argument : step.arguments) {
        const auto [tag, chain] = inputIn(argument);
        if (chain.empty())
            continue;
        for (const StepInput& known : call.inputs)
            if (known.tag == tag)
                throw JobError(
                    errors::kStepArguments,
                    {.step = call.name, .what = "two inputs have the tag \"" + tag + "\""});
        call.inputs.push_back({tag, planChain(chain, call.name)});
    }
}

void Planner::readArguments(const language::Step& step, const StepKind& kind, StepCall& call)
{
    std::vector<const language::Argument*> places;
    for (const language::Argument& argument : step.arguments)
        if (inputIn(argument).second.empty())
            places.push_back(&argument);
    ArgumentReader reader(step, std::move(places), call);
    if (kind.arguments == StepArguments::Lambda)
        call.lambda = lambdaOf(reader.lambda(), call.name);
    else
        reader.read(kind.arguments);
}

const language::Expression* Planner::lambdaOf(const language::Expression& argument,
                                              const std::string& step) const
{
    const language::Expression* expression = &argument;
    // A name may be bound to another name. A cycle is detected after as many steps as there are
    // names.
    for (std::size_t hops = 0; hops <= _values.size(); ++hops) {
        const auto* name = std::get_if<language::Name>(&expression->value);
        if (!name)
            return expression;
        const auto found = _values.find(name->name);
        if (found == _values.end()) {
            const std::string suggestion =
                base::suggestion(name->name, _values, &Definitions::value_type::first);
            throw JobError(errors::kUnknownName,
                           {.step = step,
                            .name = name->name,
                            .hasSuggestion = !suggestion.empty(),
                            .what = "there is no definition \"" + name->name + "\"" + suggestion});
        }
        expression = found->second;
    }
    throw JobError(errors::kCycle,
                   {.step = step, .what = "the definition of the lambda leads back to itself"});
}

} // namespace EmbeddedHV
