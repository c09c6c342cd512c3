#pragma once

#include "Attention.h"

/// Whether the user asked the host for a stop. The walks over a result ask it, so that a large
/// document does not hold the host; they end early then, and keep what they have shown.
inline bool isStopRequested()
{
    int asked = 0;
    ATNCHK(&asked);
    return asked != 0;
}
