#pragma once

#include <functional>
#include <string>

#include "ErrorIds.h"
#include "JobError.h"
#include "steps/JobContext.h"

namespace EmbeddedHV {

/// Called between parts of a computation; throws to end it.
using StopCheck = std::function<void()>;

/// Throws JobError once the job is stopped. The context is borrowed. `component` begins the
/// message.
inline StopCheck stopCheckOf(const JobContext& context, std::string component)
{
    return [&context, component = std::move(component)] {
        // The job turns any fault into its cancellation where it was cancelled.
        if (context.stopping())
            throw JobError(errors::kQueryFailed,
                           {.step = component, .what = "the job was stopped"});
    };
}

} // namespace EmbeddedHV
