#pragma once

/// Exports a class or function from the host library.
#ifndef _WIN32
#define HOST_API __attribute__((visibility("default")))
#else // Windows: the working library is not built there
#define HOST_API __declspec(dllimport)
#endif
