#pragma once

#include <string>

#include <nlohmann/json.hpp>

#include "hvl/HVLFunction.h"

/// A builder for what the library has no builders for, because other engines need not have it: the
/// steps of this engine that order and select records, and its own settings of other steps. Inputs
/// that are added with a tag keep it.
class EngineStep : public HVLFunction
{
public:
    /// The program is borrowed.
    EngineStep(JNIHvlProgram* program, std::string name, nlohmann::json configuration);
    EngineStep(const EngineStep&) = delete;
    EngineStep& operator=(const EngineStep&) = delete;

    bool GenerateHVL() override;

private:
    std::string _name;
    nlohmann::json _configuration;
};
