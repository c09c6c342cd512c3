#pragma once

/// Marks what the engine library exports. Types need it on both sides of the edge, so that an
/// exception thrown by the engine is caught by its type in another library.
#define ENGINE_API __attribute__((visibility("default")))
