#include "hvl/HVLFilterFields.h"

#include "bridge/JNIJSONArray.h"
#include "bridge/JNIJSONObject.h"

HVLFilterFields::HVLFilterFields(JNIHvlProgram* program) : HVLFunction(program)
{
    SetFunctionType(FilterFieldsFunction);
}

HVLFilterFields::HVLFilterFields(const HVLFilterFields& other) = default;

HVLFilterFields& HVLFilterFields::operator=(const HVLFilterFields& other) = default;

HVLFilterFields::~HVLFilterFields() = default;

void HVLFilterFields::KeepFieldNames(const std::string& name)
{
    _names.push_back(name);
}

void HVLFilterFields::KeepFieldNames(const std::vector<std::string>& names)
{
    _names.insert(_names.end(), names.begin(), names.end());
}

bool HVLFilterFields::GenerateHVL()
{
    if (const auto known = GetKnownResult())
        return *known;
    GenerateFirstPredecessor();

    JNIJSONArray fields;
    for (const std::string& name : _names)
        fields.add(name.c_str());
    JNIJSONObject configuration;
    configuration.put("fields", &fields);
    return CreateFunction("filterFields", configuration);
}
