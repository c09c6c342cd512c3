#pragma once

/// Marks what the host library exports.
#define HOST_API __attribute__((visibility("default")))
