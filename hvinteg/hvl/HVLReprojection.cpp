#include "hvl/HVLReprojection.h"

#include "bridge/JNIJSONArray.h"
#include "bridge/JNIJSONObject.h"

HVLReprojection::HVLReprojection(JNIHvlProgram* program) : HVLFunction(program)
{
    SetFunctionType(ReprojectionFunction);
}

HVLReprojection::HVLReprojection(const HVLReprojection& other) = default;

HVLReprojection& HVLReprojection::operator=(const HVLReprojection& other) = default;

HVLReprojection::~HVLReprojection() = default;

void HVLReprojection::SetOriCoorSystem(const std::string& csName)
{
    _sourceName = csName;
}

void HVLReprojection::SetOriCoorSystem(int wkid)
{
    _sourceWkid = wkid;
}

void HVLReprojection::SetDesCoorSystem(const std::string& csName)
{
    _destinationName = csName;
}

void HVLReprojection::SetDesCoorSystem(int wkid)
{
    _destinationWkid = wkid;
}

void HVLReprojection::SetTransMethodsName(const std::string& name)
{
    _transformation = name;
}

void HVLReprojection::SetProjectionFieldName(const std::string& name)
{
    _field = name;
}

namespace {

void putSystem(JNIJSONObject& system, const std::string& name, int wkid, int noWkid)
{
    // The key is spelt unlike the one of updateDataModel.
    if (!name.empty())
        system.put("csName", name.c_str());
    if (wkid != noWkid)
        system.put("wkid", wkid);
}

} // namespace

void HVLReprojection::putSource(JNIJSONObject& entry) const
{
    if (_sourceName.empty() && _sourceWkid == kNoWkid)
        return;
    JNIJSONObject system;
    putSystem(system, _sourceName, _sourceWkid, kNoWkid);
    entry.put("inSR", &system);
}

void HVLReprojection::putDestination(JNIJSONObject& entry) const
{
    if (_destinationName.empty() && _destinationWkid == kNoWkid)
        return;
    JNIJSONObject system;
    putSystem(system, _destinationName, _destinationWkid, kNoWkid);
    if (!_transformation.empty())
        system.put("transMethodsName", _transformation.c_str());
    entry.put("outSR", &system);
}

bool HVLReprojection::GenerateHVL()
{
    if (const auto known = GetKnownResult())
        return *known;
    GenerateFirstPredecessor();

    JNIJSONObject entry;
    if (!_field.empty())
        entry.put("name", _field.c_str());
    putSource(entry);
    putDestination(entry);
    JNIJSONArray fields;
    fields.add(&entry);
    JNIJSONObject configuration;
    configuration.put("type", _field.empty() ? "all" : "part");
    configuration.put("reprojectionFields", &fields);
    return CreateFunction("reprojection", configuration);
}
