#pragma once

#include <string>

#include "EngineExport.h"

namespace EmbeddedHV {

/// A named file that a job reads or writes. The caller implements it. The caller keeps the object
/// alive until it has disposed the execution that the object was added to. Any thread of the engine
/// may call it.
class ENGINE_API Container
{
public:
    /// The name by which the job text refers to the file, UTF-8.
    virtual std::string getName() const = 0;
    /// The whole path, UTF-8, in the host's spelling.
    virtual std::string getAbsolutePath() const = 0;
    /// The caller deletes the object. The engine never does.
    virtual ~Container() = default;
};

} // namespace EmbeddedHV
