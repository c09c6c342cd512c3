#pragma once

#include "bridge/JNIHvlType.h"

/// The type of a tuple of elements, each of a type of its own; a null stands for none.
class HVINTEG_EXPORT JNIHvlTypeTuple : public JNIHvlType
{
public:
    /// The types of the elements, which are borrowed for the call.
    explicit JNIHvlTypeTuple(std::vector<JNIHvlType*>& elements);
    JNIHvlTypeTuple(const JNIHvlTypeTuple&) = default;
    JNIHvlTypeTuple& operator=(const JNIHvlTypeTuple&) = default;
    ~JNIHvlTypeTuple() override;
};
