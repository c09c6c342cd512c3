#pragma once

#include <string>

#include "hvhost/input/DataKind.h"

class InterruptWatch;

/// Whether a command has the options that a hint may mention.
enum class FileOptions
{
    Offered,
    None
};

/// The path as a URL for the engine.
std::string engineUrl(const std::string& path);

/// The given password, or the first line of a file. Throws CommandFault (Input) if that line is
/// empty, and as ReadableFile does.
std::string readPassword(const std::string& given, const std::string& file,
                         const InterruptWatch& watch);

/// Throws CommandFault (Usage) if a password is given for a kind of file that has none, so that the
/// user does not believe that the file is encrypted. `option` is the name of the option.
void refusePassword(const std::string& path, DataKind kind, const std::string& password,
                    const char* option);
