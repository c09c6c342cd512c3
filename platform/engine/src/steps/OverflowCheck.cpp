#include "steps/OverflowCheck.h"

#include <utility>

#include "ErrorIds.h"
#include "runtime/Reporter.h"
#include "runtime/ThreadBorder.h"

namespace EmbeddedHV {

OverflowedOutput::OverflowedOutput(Session& session, std::string name)
    : _session(session), _name(std::move(name)), _id(session.overflows().add(_count))
{
}

OverflowedOutput::~OverflowedOutput()
{
    _session.overflows().remove(_id);
    border::takeOver(&_count);
}

OverflowCheck::OverflowCheck(OverflowedOutputs outputs, std::string step)
    : _outputs(std::move(outputs)), _step(std::move(step))
{
}

void OverflowCheck::start(Cancellation&, const Progress&)
{
    for (const auto& output : _outputs)
        output->takeCount();
}

void OverflowCheck::finish(Session&, Reporter& reporter)
{
    for (const auto& output : _outputs)
        if (const std::uint64_t count = output->takeCount())
            reporter.message(
                errors::kResultsOverflow,
                {.step = _step,
                 .field = output->name(),
                 .what = std::to_string(count) + (count == 1 ? " value of \"" : " values of \"") +
                         output->name() +
                         (count == 1 ? "\" exceeds the range of a Real and is missing"
                                     : "\" exceed the range of a Real and are missing")});
}

} // namespace EmbeddedHV
