#pragma once

/// Marks what the scoring library exports.
#define SCORING_API __attribute__((visibility("default")))
