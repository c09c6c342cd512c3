#pragma once

#include <string>
#include <vector>

#include "hvl/HVLFunction.h"

/// Keeps named fields and drops the others. Without any name it asks for no field at all.
class HVINTEG_EXPORT HVLFilterFields : public HVLFunction
{
public:
    explicit HVLFilterFields(JNIHvlProgram* program);
    HVLFilterFields(const HVLFilterFields& other);
    HVLFilterFields& operator=(const HVLFilterFields& other);
    ~HVLFilterFields() override;

    /// Adds to the names, in the order of the calls.
    void KeepFieldNames(const std::string& name);
    void KeepFieldNames(const std::vector<std::string>& names);

    bool GenerateHVL() override;

private:
    std::vector<std::string> _names;
};
