#include "hvhost/aggregate/AggregateChain.h"

#include <algorithm>
#include <initializer_list>

#include "bridge/JNIHvlProgram.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/job/RecordNames.h"
#include "hvl/HVLAggregate.h"
#include "hvl/HVLExpressionFun.h"
#include "hvl/HVLFilterFields.h"
#include "support/Conversions.h"

namespace {

constexpr const char* kStatisticHint =
    "for example --stat mean:price, --stat p90:price:high, --stat count";
/// The prefix for names of intermediate fields. Names of this form are unlikely in a file.
constexpr const char* kTemporary = "hvhost weighted ";

/// For example p90. An invalid number is reported later.
bool isPercentile(const std::string& function)
{
    return function.size() > 1 && function.front() == 'p' &&
           function.find_first_not_of("0123456789", 1) == std::string::npos;
}

bool isIn(const std::string& function, std::initializer_list<const char*> functions)
{
    return std::find(functions.begin(), functions.end(), function) != functions.end();
}

} // namespace

/// FUNCTION:FIELD[:NAME], split into its parts. Without a name, the engine's default name is used.
struct AggregateChain::Statistic
{
    Statistic(const std::string& text, const std::string& option, const RecordNames& names)
    {
        const std::size_t first = text.find(':');
        function = text.substr(0, first);
        if (first != std::string::npos) {
            const std::size_t second = text.find(':', first + 1);
            field = text.substr(first + 1, second - first - 1);
            if (!field.empty())
                field = names.own(field, option);
            if (second != std::string::npos)
                name = text.substr(second + 1);
        }
        if (name.empty())
            name = field.empty() ? function : function + "_" + field;
    }

    std::string function;
    std::string field;
    std::string name;
};

AggregateChain::AggregateChain(JNIHvlProgram& program, HVLFunction& input, const RecordNames& names,
                               const std::vector<std::string>& by,
                               const std::vector<std::string>& statistics,
                               const std::string& weight)
    : _program(program), _weight(weight), _last(&input),
      _aggregates(std::make_unique<HVLAggregate>(&program))
{
    if (!_weight.empty())
        leaveOutUnweighted();
    for (const std::string& name : by) {
        _option = "--by " + name;
        const std::string field = names.own(name, _option);
        addResult(field);
        addOutput("key", field, field);
    }
    for (const std::string& statistic : statistics) {
        _option = "--stat " + statistic;
        addStatistic(Statistic(statistic, _option, names));
    }
    _aggregates->AddPredFunction(_last);
    _last = _aggregates.get();
    if (!_weight.empty())
        deriveResults();
}

AggregateChain::~AggregateChain() = default;

/// The builder does not check its arguments, so errors are detected here.
void AggregateChain::addStatistic(const Statistic& statistic)
{
    if (statistic.field.empty() && statistic.function != "count")
        throw CommandFault(ExitStatus::Usage, _option + ": a field is missing", kStatisticHint);
    addResult(statistic.name);
    if (!_weight.empty() && !isIn(statistic.function, {"min", "max", "first", "last"})) {
        addWeighted(statistic);
        return;
    }
    if (!isPercentile(statistic.function)) {
        addOutput(statistic.function, statistic.field, statistic.name);
        return;
    }
    const int centile = String2Integer(statistic.function.substr(1));
    if (centile < 1 || centile > 100)
        throw CommandFault(ExitStatus::Usage, _option + ": a percentile is 1 to 100",
                           kStatisticHint);
    _aggregates->AddPercentileAggregate(centile, statistic.field, statistic.name);
    _origins.push_back(_option);
}

void AggregateChain::addWeighted(const Statistic& statistic)
{
    const std::string& function = statistic.function;
    if (isPercentile(function) || isIn(function, {"sd", "variance", "median"}))
        throw CommandFault(ExitStatus::Usage,
                           _option + ": " + function +
                               " cannot be weighted, and the records are, by " + _weight,
                           "--unweighted counts each record once; hvhost describe has weighted "
                           "statistics");
    if (function == "count")
        addWeightedCount(statistic);
    else if (function == "sum")
        addWeightedSum(statistic);
    else if (function == "mean")
        addWeightedMean(statistic);
    else
        addOutput(function, statistic.field, statistic.name);
}

/// A sum of weights, in which 0 is not missing.
void AggregateChain::addWeightedCount(const Statistic& statistic)
{
    const std::string sum = statistic.field.empty() ? summed(derived(expression("%s", {_weight})))
                                                    : summedWeights(finite(statistic.field));
    _weighted.push_back({statistic.name, "ifMissing(%s, 0.0)", {sum}});
}

void AggregateChain::addWeightedSum(const Statistic& statistic)
{
    const std::string product = derived(expression("%s * %s", {_weight, statistic.field}));
    const std::string overflow = overflowOf(finite(statistic.field), product);
    _weighted.push_back(
        {statistic.name, "if (isMissing(%s)) %s else null", {overflow, summed(product)}});
}

void AggregateChain::addWeightedMean(const Statistic& statistic)
{
    // As reals, because the product of two integers may exceed 64 bits.
    const std::string product = derived(expression("1.0 * %s * %s", {_weight, statistic.field}));
    const std::string field = finite(statistic.field);
    const std::string overflow = overflowOf(field, product);
    const std::string products = summed(product);
    _weighted.push_back({statistic.name,
                         "if (isMissing(%s)) %s / %s else null",
                         {overflow, products, summedWeights(field)}});
}

/// A copy of the field. A derived field stores an infinite or not-a-number value as missing. The
/// aggregate step treats such a value as missing too.
std::string AggregateChain::finite(const std::string& field)
{
    return derived(expression("%s", {field}));
}

/// Adds the sum of the field to the aggregate step and returns its name.
std::string AggregateChain::summed(const std::string& field)
{
    addOutput("sum", field, field);
    return field;
}

/// The sum of the weights of the records that have a value.
std::string AggregateChain::summedWeights(const std::string& field)
{
    return summed(derived(expression("if (isMissing(%s)) null else %s", {field, _weight})));
}

/// An output of the aggregate step that is missing unless a product exceeds the range of a real.
/// Such a product is missing. Without this, its record would be left out of the sum.
std::string AggregateChain::overflowOf(const std::string& field, const std::string& product)
{
    return summed(
        derived(expression("if (isMissing(%s) || !isMissing(%s)) null else 1", {field, product})));
}

void AggregateChain::addOutput(const std::string& function, const std::string& input,
                               const std::string& name)
{
    _aggregates->AddAggregate(function, input, name);
    _origins.push_back(_option);
}

/// The engine detects duplicate names only among the outputs of one step.
void AggregateChain::addResult(const std::string& name)
{
    if (!_weight.empty() && std::find(_names.begin(), _names.end(), name) != _names.end())
        throw CommandFault(ExitStatus::Usage,
                           _option + ": there is a result \"" + name + "\" already",
                           "--stat FUNCTION:FIELD:NAME gives it another name");
    _names.push_back(name);
}

/// Removes records whose weight is not a positive finite number.
void AggregateChain::leaveOutUnweighted()
{
    append().SetFilterRecords(
        expression("%s > 0 && %s <= 1.7976931348623157e308", {_weight, _weight}));
}

std::string AggregateChain::derived(JNIHvlExpression* value)
{
    std::string name = kTemporary + std::to_string(++_temporaryCount);
    append().SetDeriveField(name, value);
    _composed.push_back({_option, "\"" + name + "\""});
    return name;
}

void AggregateChain::deriveResults()
{
    for (const WeightedResult& result : _weighted)
        append().SetDeriveField(result.name, expression(result.pattern, result.outputs));
    _results = std::make_unique<HVLFilterFields>(&_program);
    _results->KeepFieldNames(_names);
    _results->AddPredFunction(_last);
    _last = _results.get();
}

HVLExpressionFun& AggregateChain::append()
{
    _steps.push_back(std::make_unique<HVLExpressionFun>(&_program));
    _steps.back()->AddPredFunction(_last);
    _last = _steps.back().get();
    return *_steps.back();
}

/// Fills the pattern with fields of the record.
JNIHvlExpression* AggregateChain::expression(const std::string& pattern,
                                             const std::vector<std::string>& fields)
{
    std::vector<JNIHvlExpression*> arguments;
    arguments.reserve(fields.size());
    for (const std::string& field : fields)
        arguments.push_back(_program.createHvlExpressionFieldReference(field));
    return _program.createHvlExpression(pattern, &arguments);
}
