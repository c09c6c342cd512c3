#pragma once

#include "bridge/JNIHvlType.h"

/// The type of a list with elements of one type.
class HVINTEG_EXPORT JNIHvlTypeList : public JNIHvlType
{
public:
    /// The type of the elements is borrowed for the call.
    explicit JNIHvlTypeList(JNIHvlType& element);
    JNIHvlTypeList(const JNIHvlTypeList&) = default;
    JNIHvlTypeList& operator=(const JNIHvlTypeList&) = default;
    ~JNIHvlTypeList() override;
};
