#pragma once

/// Marks a class or function that crosses the library's edge. Everything else is hidden.
#define HVINTEG_EXPORT __attribute__((visibility("default")))
