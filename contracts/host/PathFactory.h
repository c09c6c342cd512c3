#pragma once

#include <string>

#include "HostExport.h"

/// Locates the host's directories.
class HOST_API PathFinder
{
public:
    virtual ~PathFinder() = default;
    /// The installation directory in the host's encoding and spelling, without a trailing
    /// separator. VEXA_HOME if it is set, otherwise the directory "hvinteg" beside the host's
    /// library.
    virtual std::string getInstallationPath() const = 0;
};

/// Provides the current path finder. Any thread.
class HOST_API PathFactory
{
public:
    /// The current path finder. Owned by the factory unless it was set.
    static PathFinder* getPathInstance();
    /// Replaces the path finder. It is borrowed; null restores the host's own.
    static void setPathInstance(PathFinder* finder);
};
