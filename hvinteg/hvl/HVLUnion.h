#pragma once

#include "hvl/HVLFunction.h"

/// Appends the records of several inputs. Fields are matched by name, and letter case is ignored by
/// default.
class HVINTEG_EXPORT HVLUnion : public HVLFunction
{
public:
    /// The program is borrowed.
    explicit HVLUnion(JNIHvlProgram* program);
    /// Copies the settings, and what a copy of HVLFunction shares.
    HVLUnion(const HVLUnion& other);
    /// Replaces the settings, and what a copy of HVLFunction shares.
    HVLUnion& operator=(const HVLUnion& other);
    ~HVLUnion() override;

    /// Matches fields by position instead; names are then ignored. False by default.
    void SetMatchByPosition(bool matchByPosition) { _matchByPosition = matchByPosition; }
    /// Whether letter case of names must match. False by default.
    void SetMatchCase(bool matchCase) { _matchCase = matchCase; }

    /// Creates all inputs and this step. An input that cannot be created is left out, so callers
    /// check GenerateHVL of each input first.
    bool GenerateHVL() override;

private:
    bool _matchByPosition = false;
    bool _matchCase = false;
};
