#pragma once

#include "FaultLayer.h"

namespace faultlayer {

/// Counts a call; whether it is the one to fail. Any thread.
bool isToFail(Kind kind, const void* returnAddress);

} // namespace faultlayer
