#pragma once

/// Exports a name of the report library; all others are hidden.
#define REPORT_API __attribute__((visibility("default")))
