#pragma once

/// Marks what the engine library exports. Types need it in both libraries: otherwise a caller could
/// not catch an exception of the engine by its type.
#define ENGINE_API __attribute__((visibility("default")))
