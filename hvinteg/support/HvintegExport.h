#pragma once

/// Exports a class or function from the library. Everything without this mark is hidden.
#define HVINTEG_EXPORT __attribute__((visibility("default")))
/// Hides a private class that is nested in an exported class, and would otherwise be exported with
/// it.
#define HVINTEG_HIDDEN __attribute__((visibility("hidden")))
