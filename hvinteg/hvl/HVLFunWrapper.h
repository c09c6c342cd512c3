#pragma once

#include "hvl/HVLFunction.h"

/// Inserts a function that the caller has created into a chain of builders. It adds nothing to the
/// program, so IsCreatedHvl stays false.
class HVINTEG_EXPORT HVLFunWrapper : public HVLFunction
{
public:
    /// The program is borrowed and may be null.
    explicit HVLFunWrapper(JNIHvlProgram* program);
    /// Copies the settings, and what a copy of HVLFunction shares.
    HVLFunWrapper(const HVLFunWrapper& other);
    /// Replaces the settings, and what a copy of HVLFunction shares.
    HVLFunWrapper& operator=(const HVLFunWrapper& other);
    ~HVLFunWrapper() override;

    /// Sets the function that successors use as their input. Borrowed.
    void SetHVFunction(JNIHvlFunction* function);
    /// Does nothing and returns true.
    bool GenerateHVL() override;
};
