#pragma once

#include <string>

#include "CFUpperFunc.h"
#include "HostExport.h"

/// Returns the upper-case form of a variable's name. Both are UTF-8. The host treats names with
/// equal forms as equal. Any thread.
HOST_API std::string GetUpperVarName(const std::string& name);

/// The host's rules for letters, for the look-up of fields.
class HOST_API CFUpperFuncImpl : public CFUpperFunc
{
public:
    /// See GetUpperVarName.
    std::string ToUpper(const std::string& name) const override { return GetUpperVarName(name); }
};
