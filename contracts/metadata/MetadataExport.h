#pragma once

/// Exports a class or function from the metadata library.
#ifndef _WIN32
#define METADATA_API __attribute__((visibility("default")))
#else // Windows: the working library is not built there
#define METADATA_API __declspec(dllimport)
#endif
