#include "hvl/HVLAggregate.h"

#include <utility>

#include "bridge/JNIJSONArray.h"
#include "bridge/JNIJSONObject.h"

HVLAggregate::HVLAggregate(JNIHvlProgram* program) : HVLFunction(program)
{
    SetFunctionType(AggregateFunction);
}

HVLAggregate::HVLAggregate(const HVLAggregate& other) = default;

HVLAggregate& HVLAggregate::operator=(const HVLAggregate& other) = default;

HVLAggregate::~HVLAggregate() = default;

void HVLAggregate::AddAggregate(const std::string& function, const std::string& input,
                                const std::string& outName)
{
    // Only "count" works without a field.
    if (input.empty() && function != "count")
        return;
    auto aggregate = std::make_shared<JNIJSONObject>();
    if (!input.empty())
        aggregate->put("input", input.c_str());
    aggregate->put("function", function.c_str());
    if (!outName.empty())
        aggregate->put("outName", outName.c_str());
    _aggregates.push_back(std::move(aggregate));
}

void HVLAggregate::AddPercentileAggregate(int centile, const std::string& input,
                                          const std::string& outName)
{
    if (input.empty() || centile < 1 || centile > 100)
        return;
    auto aggregate = std::make_shared<JNIJSONObject>();
    aggregate->put("input", input.c_str());
    aggregate->put("function", "percentile");
    if (!outName.empty())
        aggregate->put("outName", outName.c_str());
    aggregate->put("centile", centile);
    _aggregates.push_back(std::move(aggregate));
}

bool HVLAggregate::GenerateHVL()
{
    if (const auto known = GetKnownResult())
        return *known;
    GenerateFirstPredecessor();

    JNIJSONArray output;
    for (const auto& aggregate : _aggregates)
        output.add(aggregate.get());
    JNIJSONObject configuration;
    configuration.put("output", &output);
    return CreateFunction("aggregate", configuration);
}
