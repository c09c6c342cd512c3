#include "hvl/HVLDataModelBuilder.h"

#include <vector>

#include "bridge/JNIHvlProgram.h"
#include "bridge/JNIJSONObject.h"
#include "runner/HVStatContainer.h"
#include "support/Paths.h"

HVLDataModelBuilder::HVLDataModelBuilder(JNIHvlProgram* program) : HVLFunction(program)
{
    SetFunctionType(DataModelBuilderFunction);
}

HVLDataModelBuilder::HVLDataModelBuilder(const HVLDataModelBuilder& other) = default;

HVLDataModelBuilder& HVLDataModelBuilder::operator=(const HVLDataModelBuilder& other) = default;

HVLDataModelBuilder::~HVLDataModelBuilder() = default;

void HVLDataModelBuilder::SetOutputContainer(const std::string& name, const std::string& uri)
{
    _containerName = name;
    _containerUri = uri;
}

void HVLDataModelBuilder::SetOutputContainer(const HVStatContainer& container)
{
    SetOutputContainer(container.getName(), NormalizeHvlPath(container.getAbsolutePath(), "file"));
}

bool HVLDataModelBuilder::GenerateHVL()
{
    if (const auto known = GetKnownResult())
        return *known;
    GenerateFirstPredecessor();

    JNIJSONObject exported;
    exported.put("export", true);
    exported.put("name", _containerName.c_str());
    exported.put("uri", _containerUri.c_str());
    JNIJSONObject normalized;
    if (_isNormalized)
        normalized.put("normalizeDataModel", true);
    std::vector<JNIJSONObject*> configurations = {_isNormalized ? &normalized : nullptr, &exported};
    HVLFunction* pred = GetFirstPredecessor();
    return KeepFunction(GetProgram()->createHvlFunction(
        "dataModelBuilder", &configurations, pred == nullptr ? nullptr : pred->GetHVFunction()));
}
