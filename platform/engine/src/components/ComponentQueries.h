#pragma once

#include <functional>
#include <string>

#include "datafile/Duck.h"
#include "steps/JobContext.h"

namespace EmbeddedHV {

/// Runs the statements of a component. A cancellation interrupts each of them.
class ComponentQueries
{
public:
    /// Borrows the context. `component` is the beginning of every error message.
    ComponentQueries(JobContext& context, std::string component)
        : _context(context), _component(std::move(component))
    {
    }

    /// Returns the whole result. Use it for small results. Throws JobError.
    duck::Result run(const std::string& sql) const;
    /// Passes the result to `take` chunk by chunk, in order, while it is computed. Throws JobError,
    /// and the exceptions of `take`.
    void stream(const std::string& sql, const std::function<void(duck::Chunk&)>& take) const;
    /// Throws JobError if the job is to end, for work between statements.
    void throwIfStopped() const;

    /// Reports the part of the component's work that is done, from 0 to 1.
    void progress(double part) const { _context.progress(part); }

private:
    JobContext& _context;
    std::string _component;
};

} // namespace EmbeddedHV
