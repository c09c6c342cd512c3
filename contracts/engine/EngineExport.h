#pragma once

/// Marks what the engine library exports. Types need it in both libraries: otherwise a caller could
/// not catch an exception of the engine by its type.
#ifndef _WIN32
#define ENGINE_API __attribute__((visibility("default")))
#else // Windows: the working library is not built there
#define ENGINE_API __declspec(dllimport)
#endif
