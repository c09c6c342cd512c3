#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hvhost/base/JobOrigin.h"

class HVLAggregate;
class HVLExpressionFun;
class HVLFilterFields;
class HVLFunction;
class JNIHvlExpression;
class JNIHvlProgram;
class RecordNames;

/// The steps of a generated job that aggregate its records. With a weight, each record counts as
/// often as its weight says: sums become sums of products, which are computed before the aggregate
/// step, and means become quotients of sums, which are computed after it. Borrows all arguments.
class AggregateChain
{
public:
    /// `by` and `statistics` name fields of the input, as the user wrote them; `names` finds these.
    /// `weight` is a field of the input, or empty. Throws CommandFault (Usage) for an unknown name,
    /// an invalid statistic and one that cannot be weighted.
    AggregateChain(JNIHvlProgram& program, HVLFunction& input, const RecordNames& names,
                   const std::vector<std::string>& by, const std::vector<std::string>& statistics,
                   const std::string& weight);
    ~AggregateChain();
    AggregateChain(const AggregateChain&) = delete;
    AggregateChain& operator=(const AggregateChain&) = delete;

    /// The last step of the chain. The next step follows it.
    HVLFunction* last() { return _last; }
    /// The names of the results, in their order: the keys, then the statistics.
    const std::vector<std::string>& names() const { return _names; }
    /// The options for the outputs of the aggregate step, in their order.
    const std::vector<std::string>& origins() const { return _origins; }
    /// The options for the expressions that the chain composes.
    const std::vector<JobOrigin::Expression>& composed() const { return _composed; }

private:
    struct Statistic;
    /// A result that is computed from outputs of the aggregate step.
    struct WeightedResult
    {
        std::string name;
        std::string pattern; ///< the expression, with %s for each of the outputs
        std::vector<std::string> outputs;
    };

    void addStatistic(const Statistic& statistic);
    void addWeighted(const Statistic& statistic);
    void addWeightedCount(const Statistic& statistic);
    void addWeightedSum(const Statistic& statistic);
    void addWeightedMean(const Statistic& statistic);
    void addOutput(const std::string& function, const std::string& input, const std::string& name);
    void addResult(const std::string& name);
    std::string derived(JNIHvlExpression* value);
    std::string finite(const std::string& field);
    std::string summed(const std::string& field);
    std::string summedWeights(const std::string& field);
    std::string overflowOf(const std::string& field, const std::string& product);
    void leaveOutUnweighted();
    void deriveResults();
    HVLExpressionFun& append();
    JNIHvlExpression* expression(const std::string& pattern,
                                 const std::vector<std::string>& fields);

    JNIHvlProgram& _program;
    std::string _weight;
    HVLFunction* _last;
    std::unique_ptr<HVLAggregate> _aggregates;
    std::vector<std::unique_ptr<HVLExpressionFun>> _steps;
    std::unique_ptr<HVLFilterFields> _results;
    std::vector<WeightedResult> _weighted;
    std::vector<std::string> _names; ///< of the results, in order
    std::vector<std::string> _origins;
    std::vector<JobOrigin::Expression> _composed;
    std::string _option; ///< the option that is being added
    int _temporaryCount = 0;
};
