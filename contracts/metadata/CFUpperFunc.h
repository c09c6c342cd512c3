#pragma once

#include <string>

#include "MetadataExport.h"

/// Upper-case conversion for the look-up of fields that ignores letter case. Names with equal forms
/// count as equal. The host supplies the rules.
class METADATA_API CFUpperFunc
{
public:
    virtual ~CFUpperFunc() = default;
    /// Returns the upper-case form. Both texts are UTF-8. Called on any thread that looks up a
    /// field.
    virtual std::string ToUpper(const std::string& name) const = 0;
};
