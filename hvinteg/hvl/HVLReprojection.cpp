#include "hvl/HVLReprojection.h"

#include "bridge/JNIJSONArray.h"
#include "bridge/JNIJSONObject.h"

namespace {

constexpr int kNoWkid = -1;

/// Writes a system, if it is set. Note: the name's key differs in letter case from that of
/// updateDataModel.
void putSystem(JNIJSONObject& entry, const char* key, const std::string& name, int wkid,
               const std::string& transformation)
{
    if (name.empty() && wkid == kNoWkid)
        return;
    JNIJSONObject system;
    if (!name.empty())
        system.put("csName", name.c_str());
    if (wkid != kNoWkid)
        system.put("wkid", wkid);
    if (!transformation.empty())
        system.put("transMethodsName", transformation.c_str());
    entry.put(key, &system);
}

} // namespace

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

bool HVLReprojection::GenerateHVL()
{
    if (const auto known = GetKnownResult())
        return *known;
    GenerateFirstPredecessor();

    JNIJSONObject entry;
    if (!_field.empty())
        entry.put("name", _field.c_str());
    putSystem(entry, "inSR", _sourceName, _sourceWkid, {});
    putSystem(entry, "outSR", _destinationName, _destinationWkid, _transformation);
    JNIJSONArray fields;
    fields.add(&entry);
    JNIJSONObject configuration;
    configuration.put("type", _field.empty() ? "all" : "part");
    configuration.put("reprojectionFields", &fields);
    return CreateFunction("reprojection", configuration);
}
