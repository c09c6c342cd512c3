#include "hvhost/job/SelectionStep.h"

#include <utility>

#include "bridge/JNIJSONObject.h"

SelectionStep::SelectionStep(JNIHvlProgram* program, std::string name, nlohmann::json configuration)
    : HVLFunction(program), _name(std::move(name)), _configuration(std::move(configuration))
{
}

bool SelectionStep::GenerateHVL()
{
    if (const auto known = GetKnownResult())
        return *known;
    GenerateFirstPredecessor();
    JNIJSONObject configuration(_configuration.dump().c_str());
    return CreateFunction(_name, configuration);
}
