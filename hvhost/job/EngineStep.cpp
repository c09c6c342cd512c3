#include "hvhost/job/EngineStep.h"

#include <utility>

#include "bridge/JNIJSONObject.h"

EngineStep::EngineStep(JNIHvlProgram* program, std::string name, nlohmann::json configuration)
    : HVLFunction(program), _name(std::move(name)), _configuration(std::move(configuration))
{
}

bool EngineStep::GenerateHVL()
{
    if (const auto known = GetKnownResult())
        return *known;
    JNIJSONObject configuration(_configuration.dump().c_str());
    if (GetPredecessors().size() > 1) {
        CompleteTags("str");
        GenerateAllPredecessors();
        return CreateTaggedFunction(_name, configuration);
    }
    GenerateFirstPredecessor();
    return CreateFunction(_name, configuration);
}
