#pragma once

#include "hvl/HVLFunction.h"

/// Lets a function that somebody made by hand stand in a chain of builders. It adds nothing to the
/// program, so it never counts as created.
class HVINTEG_EXPORT HVLFunWrapper : public HVLFunction
{
public:
    explicit HVLFunWrapper(JNIHvlProgram* program);
    HVLFunWrapper(const HVLFunWrapper& other);
    HVLFunWrapper& operator=(const HVLFunWrapper& other);
    ~HVLFunWrapper() override;

    /// The function stays its maker's; it is what successors get as their input.
    void SetHVFunction(JNIHvlFunction* function);
    /// Always true, with or without a program.
    bool GenerateHVL() override;
};
