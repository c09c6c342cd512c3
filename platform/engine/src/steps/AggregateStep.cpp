#include <algorithm>
#include <iterator>
#include <memory>
#include <string_view>
#include <utility>

#include "ErrorIds.h"
#include "base/NearestName.h"
#include "datafile/ColumnTypes.h"
#include "datafile/SqlQuoting.h"
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

/// An aggregate function. In the SQL, $ is the input column, # is the record number and % is the
/// centile.
struct AggregateFunction
{
    std::string_view name;
    Accepts accepts;
    Gives gives;
    const char* sql;
    bool needsOrder;
    /// SQL for reals if the database's own function is not exact enough. It treats infinite and
    /// not-a-number reals as missing. Null if `sql` is used for reals too.
    const char* sqlOfReals = nullptr;
    /// Whether a Real result that exceeds the range of its type becomes missing, with a message.
    bool missingBeyondRange = false;
};

constexpr AggregateFunction kAggregateFunctions[] = {
    {"key", Accepts::Anything, Gives::SameAsInput, "$", false},
    {"count", Accepts::Anything, Gives::Integer, "count($)", false},
    {"sum", Accepts::Numbers, Gives::SameAsInput, "sum($)", false, "hv_real_sum($)", true},
    {"mean", Accepts::Numbers, Gives::Real, "avg($)", false, "hv_real_mean($)", true},
    {"min", Accepts::Anything, Gives::SameAsInput, "min($)", false},
    {"max", Accepts::Anything, Gives::SameAsInput, "max($)", false},
    {"sd", Accepts::Numbers, Gives::Real, "hv_real_sd(CAST($ AS DOUBLE))", false, "hv_real_sd($)",
     true},
    {"variance", Accepts::Numbers, Gives::Real, "hv_real_variance(CAST($ AS DOUBLE))", false,
     "hv_real_variance($)", true},
    {"median", Accepts::Numbers, Gives::Real, "quantile_cont(CAST($ AS DOUBLE), 0.5)", false},
    {"percentile", Accepts::Numbers, Gives::Real, "quantile_cont(CAST($ AS DOUBLE), % / 100.0)",
     false},
    {"first", Accepts::Anything, Gives::SameAsInput, "arg_min_null($, #)", true},
    {"last", Accepts::Anything, Gives::SameAsInput, "arg_max_null($, #)", true},
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

/// The parts of the SELECT. Each output adds to them.
struct Aggregation
{
    Fields fields;
    std::string columns;
    std::string keys; ///< positions of the keys in the SELECT, for GROUP BY and ORDER BY
    std::string order;
    bool ordered = false;
    OverflowedOutputs overflowing;
};

/// The input in SQL. Infinite and not-a-number reals are missing, as in descriptives.
std::string aggregatedColumn(const AggregateFunction& function, const CFField* input)
{
    if (!input)
        return "*";
    std::string column = "t." + quotedIdentifier(input->GetName());
    if (input->GetStorage() != CFField::Real || function.sqlOfReals)
        return column;
    return "CASE WHEN isfinite(" + column + ") THEN " + column + " END";
}

const char* sqlOfFunction(const AggregateFunction& function, const CFField* input)
{
    const bool isReal = input && input->GetStorage() == CFField::Real;
    return isReal && function.sqlOfReals ? function.sqlOfReals : function.sql;
}

std::string filledIn(const char* sql, const std::string& column, const std::string& number,
                     std::int64_t centile)
{
    std::string text;
    for (const char character : std::string_view(sql)) {
        if (character == '$')
            text += column;
        else if (character == '#')
            text += number;
        else if (character == '%')
            text += std::to_string(centile);
        else
            text += character;
    }
    return text;
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

    aggregation.fields.push_back(resultField(name, function, input));
    std::string result = filledIn(sqlOfFunction(function, input), aggregatedColumn(function, input),
                                  "t." + number, centile);
    const bool isReal = aggregation.fields.back().GetStorage() == CFField::Real;
    if (isReal && function.missingBeyondRange) {
        aggregation.overflowing.push_back(
            std::make_shared<OverflowedOutput>(call.context.database.overflows(), name));
        result = aggregation.overflowing.back()->finite(result);
    }
    // The database computes the sum of integers in a wider type. The cast checks that it fits.
    const char* type = sqlTypeOf(aggregation.fields.back().GetStorage());
    aggregation.columns += (aggregation.columns.empty() ? "" : ", ") +
                           ("CAST(" + result + " AS " + type + ") AS " + quotedIdentifier(name));
    aggregation.ordered |= function.needsOrder;
    if (function.name != "key")
        return;
    const std::string place = std::to_string(aggregation.fields.size());
    aggregation.keys += (aggregation.keys.empty() ? "" : ", ") + place;
    aggregation.order += (aggregation.order.empty() ? "" : ", ") + place + " NULLS LAST";
}

} // namespace

/// One record for each combination of key values, ordered by the keys.
StepResult planAggregate(StepCall& call)
{
    const Settings settings = call.settings();
    const Json& outputs = settings.neededList("output");
    if (outputs.empty())
        settings.refuse("output", "is empty: there is nothing to aggregate");
    const std::string number = quotedIdentifier(unusedName(call.input()->fields, "hv_record"));
    Aggregation aggregation;
    for (std::size_t i = 0; i < outputs.size(); ++i)
        addOutput(call, settings.objectAt(outputs, "output", i), number, aggregation);
    settings.reportOthers(call.context.message);
    Fields fields = aggregation.fields;
    // Record numbers need an extra pass, so they are added only for functions that depend on the
    // order.
    const NodePtr node = derivedNode(
        std::move(fields), {call.input()},
        [aggregation, number](const std::vector<std::string>& inputs) {
            const std::string from = aggregation.ordered ? "(SELECT *, row_number() OVER () AS " +
                                                               number + " FROM " + inputs[0] + ")"
                                                         : inputs[0];
            return "SELECT " + aggregation.columns + " FROM " + from + " AS t" +
                   (aggregation.keys.empty()
                        ? ""
                        : " GROUP BY " + aggregation.keys + " ORDER BY " + aggregation.order);
        });
    if (!aggregation.overflowing.empty())
        node->check = std::make_shared<OverflowCheck>(aggregation.overflowing, call.name);
    return {node, nullptr};
}

} // namespace EmbeddedHV
