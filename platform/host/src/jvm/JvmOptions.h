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
/// VEXA_JVM_OPTIONS, so that a later one overrides an earlier. Throws VexaJVMError for what would
/// keep the machine from starting: the engine's jar cannot be read or cannot be on a class path,
/// the working directory is gone, an option makes the machine end the process.
JvmOptions jvmOptions(const std::vector<std::string>& added);
