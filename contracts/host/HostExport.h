#pragma once

/// Exports a class or function from the host library.
#define HOST_API __attribute__((visibility("default")))
