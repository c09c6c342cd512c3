#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hvl/HVLFunction.h"

/// Summarises records into output fields: one record for each distinct combination of the fields
/// that have the function "key", or one for all.
class HVINTEG_EXPORT HVLAggregate : public HVLFunction
{
public:
    explicit HVLAggregate(JNIHvlProgram* program);
    /// A copy shares the aggregates that it was made with; what is added later goes to one of them.
    HVLAggregate(const HVLAggregate& other);
    HVLAggregate& operator=(const HVLAggregate& other);
    ~HVLAggregate() override;

    /// Adds an output field. The function is the engine's word, as in "min", "max" or "key". Only
    /// "count" works without an input field; any other function then adds nothing. An empty output
    /// name leaves the choice to the engine.
    void AddAggregate(const std::string& function, const std::string& input,
                      const std::string& outName);
    /// Adds a percentile, 1 to 100. A centile outside of that, or an empty input, adds nothing.
    void AddPercentileAggregate(int centile, const std::string& input, const std::string& outName);

    bool GenerateHVL() override;

private:
    /// Shared by copies. The Java objects last until `cleanJRef`.
    std::vector<std::shared_ptr<JNIJSONObject>> _aggregates;
};
