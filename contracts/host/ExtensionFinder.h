#pragma once

#include <string>

#include "HostExport.h"

/// Finds components that are installed with the host.
class HOST_API ExtensionFinder
{
public:
    /// The directory that contains "lib", with a folder for each component. In the host's encoding
    /// and spelling, with a trailing separator. Any thread.
    static std::string GetCFPath();
};
