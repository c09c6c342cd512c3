#include "hvl/HVLUnion.h"

#include "bridge/JNIJSONObject.h"

HVLUnion::HVLUnion(JNIHvlProgram* program) : HVLFunction(program)
{
    SetFunctionType(UnionFunction);
}

HVLUnion::HVLUnion(const HVLUnion& other) = default;

HVLUnion& HVLUnion::operator=(const HVLUnion& other) = default;

HVLUnion::~HVLUnion() = default;

bool HVLUnion::GenerateHVL()
{
    if (const auto known = GetKnownResult())
        return *known;
    CompleteTags("str");
    GenerateAllPredecessors();

    JNIJSONObject configuration;
    configuration.put("matchByPosition", _matchByPosition);
    configuration.put("matchCase", _matchCase);
    return CreateTaggedFunction("union", configuration);
}
