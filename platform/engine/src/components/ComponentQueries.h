#pragma once

#include <functional>
#include <string>

#include "steps/JobContext.h"

namespace EmbeddedHV {

/// Runs the statements by which a component computes, each watched so that a cancellation ends it.
class ComponentQueries
{
public:
    /// The context is borrowed. `component` begins every message.
    ComponentQueries(JobContext& context, std::string component)
        : _context(context), _component(std::move(component))
    {
    }

    /// The whole result: for small ones. Throws JobError.
    duck::Result run(const std::string& sql) const;
    /// Hands out the result chunk by chunk as it is made, in its order. Throws JobError, and what
    /// `take` throws.
    void stream(const std::string& sql, const std::function<void(duck::Chunk&)>& take) const;

private:
    void throwIfStopped() const;

    JobContext& _context;
    std::string _component;
};

} // namespace EmbeddedHV
