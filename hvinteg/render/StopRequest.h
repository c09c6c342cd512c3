#pragma once

#include "Attention.h"

/// Whether the user requests a stop. Loops over a result test it, so that a large document does not
/// block the host. They then end and keep what they have shown.
inline bool isStopRequested()
{
    int asked = 0;
    ATNCHK(&asked);
    return asked != 0;
}
