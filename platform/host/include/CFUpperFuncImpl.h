#pragma once

#include <string>

#include "CFUpperFunc.h"
#include "HostExport.h"

/// The upper-case form of a variable's name, UTF-8 as the name: names with the same form are one
/// name to the host. Any thread.
HOST_API std::string GetUpperVarName(const std::string& name);

/// The host's rules of letters, for the look-up of fields.
class HOST_API CFUpperFuncImpl : public CFUpperFunc
{
public:
    std::string ToUpper(const std::string& name) const override { return GetUpperVarName(name); }
};
