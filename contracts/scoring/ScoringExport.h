#pragma once

/// Marks what the scoring library exports.
#ifndef _WIN32
#define SCORING_API __attribute__((visibility("default")))
#else // Windows: the working library is not built there
#define SCORING_API __declspec(dllimport)
#endif
