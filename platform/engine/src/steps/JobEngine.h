#pragma once

#include <memory>

#include "runtime/FileSpace.h"
#include "runtime/Session.h"
#include "steps/DataFiles.h"

namespace EmbeddedHV {

/// What the jobs of a service run on: the embedded database or a cluster. Any thread.
class JobEngine
{
public:
    virtual ~JobEngine() = default;
    /// A session for one job. It connects in Session::open. Borrows the engine.
    virtual std::unique_ptr<Session> newSession() = 0;
    /// The files of the job. Borrows both arguments.
    virtual std::unique_ptr<const DataFiles> newFiles(Session& session, const FileSpace& files) = 0;
};

} // namespace EmbeddedHV
