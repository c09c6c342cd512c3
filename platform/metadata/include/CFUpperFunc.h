#pragma once

#include <string>

#include "MetadataExport.h"

/// Upper-casing for the look-up of fields without regard to letter case: two names whose forms are
/// the same count as one. The host's rules of letters are the host's to supply.
class METADATA_API CFUpperFunc
{
public:
    virtual ~CFUpperFunc() = default;
    /// Both texts are UTF-8. May be called from any thread that looks a field up.
    virtual std::string ToUpper(const std::string& name) const = 0;
};
