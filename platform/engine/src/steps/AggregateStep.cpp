#include <algorithm>
#include <iterator>
#include <memory>
#include <set>
#include <string_view>
#include <utility>

#include "ErrorIds.h"
#include "base/NearestName.h"
#include "datafile/StorageWords.h"
#include "expression/FieldTypes.h"
#include "steps/OverflowCheck.h"
#include "steps/StepCall.h"

namespace EmbeddedHV {
namespace {

/// The input that an aggregate accepts.
enum class Accepts
{
    Numbers,
    Anything
};

/// The type of an aggregate's result: a fixed type, or the type of its input.
enum class Gives
{
    Integer,
    Real,
    SameAsInput
};

/// An aggregate function, as a job names it.
struct AggregateFunction
{
    std::string_view name;
    Aggregate function;
    Accepts accepts;
    Gives gives;
    bool needsOrder = false;
    /// Whether a Real result that exceeds the range of its type becomes missing, with a message.
    bool missingBeyondRange = false;
};

constexpr AggregateFunction kAggregateFunctions[] = {
    {"key", Aggregate::Key, Accepts::Anything, Gives::SameAsInput},
    {"count", Aggregate::Count, Accepts::Anything, Gives::Integer},
    {"sum", Aggregate::Sum, Accepts::Numbers, Gives::SameAsInput, false, true},
    {"mean", Aggregate::Mean, Accepts::Numbers, Gives::Real, false, true},
    {"min", Aggregate::Least, Accepts::Anything, Gives::SameAsInput},
    {"max", Aggregate::Greatest, Accepts::Anything, Gives::SameAsInput},
    {"sd", Aggregate::Deviation, Accepts::Numbers, Gives::Real, false, true},
    {"variance", Aggregate::Variance, Accepts::Numbers, Gives::Real, false, true},
    {"median", Aggregate::Median, Accepts::Numbers, Gives::Real},
    {"percentile", Aggregate::Percentile, Accepts::Numbers, Gives::Real},
    {"first", Aggregate::First, Accepts::Anything, Gives::SameAsInput, true},
    {"last", Aggregate::Last, Accepts::Anything, Gives::SameAsInput, true},
};

const AggregateFunction& functionOf(const Settings& output)
{
    const std::string name = output.neededText("function");
    const auto* found =
        std::find_if(std::begin(kAggregateFunctions), std::end(kAggregateFunctions),
                     [&](const AggregateFunction& known) { return known.name == name; });
    if (found != std::end(kAggregateFunctions))
        return *found;
    const std::string suggestion =
        base::suggestion(name, kAggregateFunctions, &AggregateFunction::name);
    output.refuse(
        "function", "is \"" + name + "\", which is not an aggregate function" + suggestion,
        {.name = name, .kind = kinds::kNoSuchFunction, .hasSuggestion = !suggestion.empty()});
}

/// What the SELECT needs. Each output adds to it.
struct Aggregation
{
    Fields fields;
    std::vector<AggregateColumn> columns;
    std::set<std::string> inputs; ///< the fields that it reads
    bool ordered = false;         ///< whether a result depends on the order of the records
    ResultColumns results;
    OverflowedOutputs overflowing; ///< those of the finite columns, which it keeps
};

AggregateCall callOf(const Dialect& dialect, const AggregateFunction& function,
                     const CFField* input, const std::string& number, std::int64_t centile)
{
    if (!input)
        return {function.function, ValueType::Integer, "*", number, centile};
    return {function.function, valueTypeOf(input->GetStorage()),
            "t." + dialect.name(input->GetName()), number, centile};
}

/// A key keeps the whole metadata of its field. Other results have only a type.
CFField resultField(const std::string& name, const AggregateFunction& function,
                    const CFField* input)
{
    if (function.name == "key") {
        CFField key = *input;
        key.SetName(name);
        return key;
    }
    if (function.gives == Gives::Integer)
        return plainField(name, CFField::Integer);
    return plainField(name, function.gives == Gives::Real ? CFField::Real : input->GetStorage());
}

/// 0 for functions without a centile.
std::int64_t centileOf(const Settings& output, const AggregateFunction& function)
{
    if (function.name != "percentile")
        return 0;
    const auto centile = output.integer("centile");
    if (!centile)
        output.neededText("centile"); // throws that the setting is missing
    if (*centile < 1 || *centile > 100)
        output.refuse("centile", "is " + std::to_string(*centile) + ", not 1 to 100");
    return *centile;
}

/// For example mean_income. A key keeps its name.
std::string defaultName(const AggregateFunction& function, const CFField* input)
{
    if (!input)
        return std::string(function.name);
    return function.name == "key" ? input->GetName()
                                  : std::string(function.name) + "_" + input->GetName();
}

void addOutput(StepCall& call, const Settings& output, const std::string& number,
               Aggregation& aggregation)
{
    const AggregateFunction& function = functionOf(output);
    const std::string inputName = output.text("input").value_or("");
    if (inputName.empty() && function.name != "count")
        output.neededText("input");
    const CFField* input =
        inputName.empty() ? nullptr : &call.inputField(inputName, output.pathOf("input"));
    if (input && function.accepts == Accepts::Numbers && input->GetStorage() != CFField::Integer &&
        input->GetStorage() != CFField::Real)
        output.refuse("input", "names \"" + inputName + "\", which is " +
                                   typeWordOf(input->GetStorage()) + ": " +
                                   std::string(function.name) + " needs a number");
    const std::int64_t centile = centileOf(output, function);
    std::string name = output.text("outName").value_or("");
    if (name.empty())
        name = defaultName(function, input);
    refuseDuplicate(aggregation.fields, name, call.name, output.pathOf("outName"));
    output.reportOthers(call.context.message);

    if (input)
        aggregation.inputs.insert(input->GetName());
    aggregation.fields.push_back(resultField(name, function, input));
    const Dialect& dialect = call.context.dialect;
    const bool isReal = aggregation.fields.back().GetStorage() == CFField::Real;
    ResultColumns& results = aggregation.results;
    results.all.push_back(dialect.name(name));
    if (function.function == Aggregate::Key)
        results.keys.push_back(results.all.back());
    if (isReal && function.missingBeyondRange) {
        aggregation.overflowing.push_back(
            std::make_shared<OverflowedOutput>(*call.context.session, name));
        results.finite.push_back({results.all.back(), aggregation.overflowing.back()->number()});
    }
    // The database computes the sum of integers in a wider type. The cast checks that it fits.
    const ValueType type = valueTypeOf(aggregation.fields.back().GetStorage());
    aggregation.columns.push_back(
        {callOf(dialect, function, input, "t." + number, centile), results.all.back(),
         [&dialect, type](const std::string& result) { return dialect.cast(result, type); }});
    aggregation.ordered |= function.needsOrder;
}

} // namespace

/// One record for each combination of key values, ordered by the keys.
StepResult planAggregate(StepCall& call)
{
    const Settings settings = call.settings();
    const Json& outputs = settings.neededList("output");
    if (outputs.empty())
        settings.refuse("output", "is empty: there is nothing to aggregate");
    const Dialect& dialect = call.context.dialect;
    const std::string number = dialect.name(unusedName(call.input()->fields, "hv_record"));
    Aggregation aggregation;
    for (std::size_t i = 0; i < outputs.size(); ++i)
        addOutput(call, settings.objectAt(outputs, "output", i), number, aggregation);
    settings.reportOthers(call.context.message);
    Fields fields = aggregation.fields;
    Session& session = *call.context.session;
    // Record numbers need an extra pass, so they are added only for functions that depend on the
    // order.
    const auto select = [aggregation, number, &dialect,
                         &session](const std::vector<std::string>& inputs) {
        std::string records =
            dialect.aggregated(aggregation.ordered ? dialect.ordered(inputs[0], number) : inputs[0],
                               aggregation.columns);
        return aggregation.results.finite.empty()
                   ? records
                   : session.finiteResults(records, aggregation.results);
    };
    const NodePtr node = derivedNode(std::move(fields), {call.input()}, select);
    node->reads = Reads::Listed;
    node->readFields = std::move(aggregation.inputs);
    if (!aggregation.overflowing.empty())
        node->check = std::make_shared<OverflowCheck>(aggregation.overflowing, call.name);
    return {node, nullptr};
}

} // namespace EmbeddedHV
