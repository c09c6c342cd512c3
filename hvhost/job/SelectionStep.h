#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "hvl/HVLFunction.h"

/// A builder for the steps of this engine that order and select records: sortRecords, limitRecords,
/// sampleRecords and distinctRecords. The library has no builders for them, because other engines
/// need not have the steps.
class SelectionStep : public HVLFunction
{
public:
    /// The program is borrowed.
    SelectionStep(JNIHvlProgram* program, std::string name, nlohmann::json configuration);
    SelectionStep(const SelectionStep&) = delete;
    SelectionStep& operator=(const SelectionStep&) = delete;

    bool GenerateHVL() override;

private:
    std::string _name;
    nlohmann::json _configuration;
};
