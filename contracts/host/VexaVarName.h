#pragma once

#include <string>

/// The name of a variable, in the host's encoding.
using VexaVarName = std::string;
