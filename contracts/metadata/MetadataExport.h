#pragma once

/// Exports a class or function from the metadata library.
#define METADATA_API __attribute__((visibility("default")))
