#pragma once

/// Marks what the metadata library exports.
#define METADATA_API __attribute__((visibility("default")))
