#include "runtime/Cancellation.h"

namespace EmbeddedHV {

Cancellation::~Cancellation()
{
    const std::lock_guard lock(_mutex);
}

void Cancellation::cancel()
{
    wake([this] {
        _cancelled = true;
        _stopping = true;
    });
}

void Cancellation::stopStatement()
{
    wake([this] { _stopping = true; });
}

void Cancellation::resume()
{
    // Under the lock, so that a concurrent cancellation is not lost.
    wake([this] { _stopping = _cancelled.load(); });
}

} // namespace EmbeddedHV
