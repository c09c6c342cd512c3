#pragma once

#include <string>
#include <vector>

#include "hvl/HVLFunction.h"

/// Keeps the named fields and drops all others. Without names it requests no field.
class HVINTEG_EXPORT HVLFilterFields : public HVLFunction
{
public:
    /// The program is borrowed.
    explicit HVLFilterFields(JNIHvlProgram* program);
    /// Copies the settings, and what a copy of HVLFunction shares.
    HVLFilterFields(const HVLFilterFields& other);
    /// Replaces the settings, and what a copy of HVLFunction shares.
    HVLFilterFields& operator=(const HVLFilterFields& other);
    ~HVLFilterFields() override;

    /// Adds a name.
    void KeepFieldNames(const std::string& name);
    /// Adds names, in their order.
    void KeepFieldNames(const std::vector<std::string>& names);

    /// Creates the input and this step; see HVLFunction::GenerateHVL.
    bool GenerateHVL() override;

private:
    std::vector<std::string> _names;
};
