#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hvl/HVLFunction.h"

/// Aggregates records: one output record for each distinct combination of the fields with the
/// function "key", or one for all records.
class HVINTEG_EXPORT HVLAggregate : public HVLFunction
{
public:
    /// The program is borrowed.
    explicit HVLAggregate(JNIHvlProgram* program);
    /// Shares the aggregates so far; later ones are added to one object only.
    HVLAggregate(const HVLAggregate& other);
    /// Shares the aggregates of `other` so far instead.
    HVLAggregate& operator=(const HVLAggregate& other);
    ~HVLAggregate() override;

    /// Adds an output field. `function` is the engine's word, for example "min", "max" or "key".
    /// Only "count" works without an input field; otherwise an empty `input` adds nothing. With an
    /// empty `outName` the engine chooses the name.
    void AddAggregate(const std::string& function, const std::string& input,
                      const std::string& outName);
    /// Adds a percentile, 1 to 100. Adds nothing for another `centile` or an empty `input`.
    void AddPercentileAggregate(int centile, const std::string& input, const std::string& outName);

    /// Creates the input and this step; see HVLFunction::GenerateHVL.
    bool GenerateHVL() override;

private:
    /// Shared by copies. The Java objects live until cleanJRef.
    std::vector<std::shared_ptr<JNIJSONObject>> _aggregates;
};
