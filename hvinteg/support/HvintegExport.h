#pragma once

/// Marks a class or function that crosses the library's edge. Everything else is hidden.
#define HVINTEG_EXPORT __attribute__((visibility("default")))
/// Keeps a private class inside, which otherwise would be shown with the exported one that it is
/// nested in.
#define HVINTEG_HIDDEN __attribute__((visibility("hidden")))
