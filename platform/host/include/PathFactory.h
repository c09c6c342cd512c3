#pragma once

#include <string>

#include "HostExport.h"

/// Finds the host's own directories.
class HOST_API PathFinder
{
public:
    virtual ~PathFinder() = default;
    /// Where the host is installed, in the host's encoding and spelling, without a trailing
    /// separator: VEXA_HOME if it is set, else the directory "hvinteg" beside the host's library.
    virtual std::string getInstallationPath() const = 0;
};

/// Gives the path finder in force. Any thread.
class HOST_API PathFactory
{
public:
    /// The path finder of the process; the factory keeps it.
    static PathFinder* getPathInstance();
    /// Puts another one in its place, borrowed; null restores the host's own.
    static void setPathInstance(PathFinder* finder);
};
