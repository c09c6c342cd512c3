#pragma once

#include <string>

#include "HostExport.h"

/// Finds what is installed beside the host.
class HOST_API ExtensionFinder
{
public:
    /// Where components stand: in "lib" below it, each in a folder of its own. In the host's
    /// encoding and spelling, with a trailing separator. Any thread.
    static std::string GetCFPath();
};
