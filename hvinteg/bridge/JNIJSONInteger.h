#pragma once

#include "bridge/JNIJSONArtifact.h"

/// Reads an integer, 32 bits with a sign; what is beyond that is cut off as Java cuts it, from a
/// Java object that it is given; it wraps none itself. JSON does not tell kinds of numbers apart,
/// so the object may be any java.lang.Number.
class HVINTEG_EXPORT JNIJSONInteger : public JNIJSONArtifact
{
public:
    JNIJSONInteger();
    JNIJSONInteger(const JNIJSONInteger&) = default;
    JNIJSONInteger& operator=(const JNIJSONInteger&) = default;
    ~JNIJSONInteger() override;

    /// Throws JNIException for a null object and for one that is no number.
    int intValue(jobject object);
};
