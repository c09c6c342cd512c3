#pragma once

#include "bridge/JNIHvlExpression.h"
#include "bridge/JNIHvlType.h"

/// One of the simple types.
class HVINTEG_EXPORT JNIHvlTypeSimple : public JNIHvlType
{
public:
    explicit JNIHvlTypeSimple(JNIHvlExpression::SimpleTypes type);
    JNIHvlTypeSimple(const JNIHvlTypeSimple&) = default;
    JNIHvlTypeSimple& operator=(const JNIHvlTypeSimple&) = default;
    ~JNIHvlTypeSimple() override;
};
