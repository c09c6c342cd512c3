#pragma once

#include "hvl/HVLFunction.h"

/// Sets records of several inputs one after the other. Their fields meet by name, whatever the
/// letter case, unless told otherwise.
class HVINTEG_EXPORT HVLUnion : public HVLFunction
{
public:
    explicit HVLUnion(JNIHvlProgram* program);
    HVLUnion(const HVLUnion& other);
    HVLUnion& operator=(const HVLUnion& other);
    ~HVLUnion() override;

    /// Whether fields meet by their place among the others; their names do not count then.
    void SetMatchByPosition(bool matchByPosition) { _matchByPosition = matchByPosition; }
    /// Whether names have to agree in letter case.
    void SetMatchCase(bool matchCase) { _matchCase = matchCase; }

    /// False too if an input cannot be created: the job would run without its records.
    bool GenerateHVL() override;

private:
    bool _matchByPosition = false;
    bool _matchCase = false;
};
