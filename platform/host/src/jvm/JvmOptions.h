#pragma once

#include <string>
#include <vector>

/// What the machine is started with, apart from its hooks.
struct JvmOptions
{
    std::string jar;
    std::vector<std::string> texts;
};

/// The options for this installation and this host: the fixed ones, then `added`, then those of
/// VEXA_JVM_OPTIONS, so that a later one overrides an earlier. Throws VexaJVMError, naming the
/// engine's jar, if that cannot be read or cannot stand on a class path.
JvmOptions jvmOptions(const std::vector<std::string>& added);
