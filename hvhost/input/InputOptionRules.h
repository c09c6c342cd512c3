#pragma once

#include "hvhost/base/CommonOptions.h"
#include "hvhost/input/DataKind.h"

/// Throws CommandFault (Usage) for an option that has no effect on this kind of file, so that the
/// user does not rely on it.
void refuseOptionsOfOtherKinds(const InputOptions& options, DataKind kind);
