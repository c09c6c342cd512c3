#pragma once

/// Exports a class or function from the library. Everything without this mark is hidden.
#ifndef _WIN32
#define HVINTEG_EXPORT __attribute__((visibility("default")))
#elif defined(hvinteg_EXPORTS) // CMake defines it for the sources of the library
#define HVINTEG_EXPORT __declspec(dllexport)
#else
#define HVINTEG_EXPORT __declspec(dllimport)
#endif

/// Hides a private member of an exported class, which would otherwise be exported with it.
#ifndef _WIN32
#define HVINTEG_HIDDEN __attribute__((visibility("hidden")))
#else
#define HVINTEG_HIDDEN
#endif
