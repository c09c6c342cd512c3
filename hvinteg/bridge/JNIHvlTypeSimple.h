#pragma once

#include "bridge/JNIHvlExpression.h"
#include "bridge/JNIHvlType.h"

/// A simple type of the job language.
class HVINTEG_EXPORT JNIHvlTypeSimple : public JNIHvlType
{
public:
    /// Values outside the enumeration mean Any.
    explicit JNIHvlTypeSimple(JNIHvlExpression::SimpleTypes type);
    JNIHvlTypeSimple(const JNIHvlTypeSimple&) = default;
    JNIHvlTypeSimple& operator=(const JNIHvlTypeSimple&) = default;
    ~JNIHvlTypeSimple() override;
};
