#pragma once

#include "bridge/JNIJSONArtifact.h"

/// Reads an integer of 32 bits from a Java object. It wraps no object itself. The object may be any
/// java.lang.Number, because JSON has only one type of number. Values out of range are converted as
/// Number.intValue does.
class HVINTEG_EXPORT JNIJSONInteger : public JNIJSONArtifact
{
public:
    /// Uses the manager's present environment.
    JNIJSONInteger();
    JNIJSONInteger(const JNIJSONInteger&) = default;
    JNIJSONInteger& operator=(const JNIJSONInteger&) = default;
    ~JNIJSONInteger() override;

    /// Throws JNIException for null and for an object that is not a java.lang.Number.
    int intValue(jobject object);
};
