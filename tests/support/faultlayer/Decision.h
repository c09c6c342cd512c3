#pragma once

#include "FaultLayer.h"

namespace faultlayer {

/// Counts a call. Returns whether it must fail. Any thread.
bool isToFail(Kind kind, const void* returnAddress);

} // namespace faultlayer
