#pragma once

#include <string>

#include "EngineExport.h"

namespace EmbeddedHV {

/// A named file that a job reads or writes. The caller implements it and keeps it alive until the
/// execution that got it is disposed.
class ENGINE_API Container
{
public:
    /// The name by which the job text refers to the file, UTF-8.
    virtual std::string getName() const = 0;
    /// The whole path, UTF-8, in the host's spelling.
    virtual std::string getAbsolutePath() const = 0;
    virtual ~Container() = default;
};

} // namespace EmbeddedHV
