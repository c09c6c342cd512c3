#pragma once

#include "bridge/JNIHvlType.h"

/// The type of a tuple.
class HVINTEG_EXPORT JNIHvlTypeTuple : public JNIHvlType
{
public:
    /// The types of the elements, in order; a null element is passed as a Java null. Borrowed for
    /// the call.
    explicit JNIHvlTypeTuple(std::vector<JNIHvlType*>& elements);
    JNIHvlTypeTuple(const JNIHvlTypeTuple&) = default;
    JNIHvlTypeTuple& operator=(const JNIHvlTypeTuple&) = default;
    ~JNIHvlTypeTuple() override;
};
