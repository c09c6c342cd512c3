#include "hvl/HVLFunWrapper.h"

HVLFunWrapper::HVLFunWrapper(JNIHvlProgram* program) : HVLFunction(program) {}

HVLFunWrapper::HVLFunWrapper(const HVLFunWrapper& other) = default;

HVLFunWrapper& HVLFunWrapper::operator=(const HVLFunWrapper& other) = default;

HVLFunWrapper::~HVLFunWrapper() = default;

void HVLFunWrapper::SetHVFunction(JNIHvlFunction* function)
{
    SetFunction(function);
}

bool HVLFunWrapper::GenerateHVL()
{
    // The caller has created the function.
    return true;
}
