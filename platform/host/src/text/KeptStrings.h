#pragma once

#include <string>

/// A copy of the text that lives as long as the process; equal texts share one copy. For operations
/// that hand out references to settings: a reference stays good when the setting changes, on
/// whatever thread. Settings take few values, so the store stays small.
const std::string& keepString(const std::string& text);
