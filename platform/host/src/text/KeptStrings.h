#pragma once

#include <string>

/// A copy of the text that lives until the process ends; equal texts share one copy. For functions
/// that return references to settings: a reference stays valid when the setting changes on another
/// thread. Settings have few values, so the store stays small.
const std::string& keepString(const std::string& text);
