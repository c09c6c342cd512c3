#pragma once

#include <string>

#include "JobError.h"

namespace EmbeddedHV {

/// The origin of a document, for messages.
struct DocumentSource
{
    std::string step;       ///< the component that reads it
    std::string file = {};  ///< the archive that contains it; empty if it is in none
    std::string entry = {}; ///< its name in the archive

    /// The parts of a message about the document, or about the archive if `entry` is empty.
    FaultParts parts(const std::string& problem) const
    {
        return {.step = step, .file = file, .what = (entry.empty() ? "" : entry + ": ") + problem};
    }
};

} // namespace EmbeddedHV
