#pragma once

#include <string>
#include <vector>

/// Start options of the machine, without its hooks.
struct JvmOptions
{
    std::string jar;
    std::vector<std::string> texts;
};

/// The environment variables with options that are set, as "NAME=VALUE", separated by blanks.
std::string optionVariables();

/// The options for this installation: the fixed ones, then `added`, then VEXA_JVM_OPTIONS, so that
/// later ones override earlier ones. Throws VexaJVMError for conditions that would prevent the
/// start: the engine's jar cannot be read or used on a class path, the working directory does not
/// exist, or an option, there or in the machine's own environment variables, makes the machine end
/// the process.
JvmOptions jvmOptions(const std::vector<std::string>& added);
