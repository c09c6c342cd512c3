#pragma once

#include <iosfwd>

struct Description;

/// Writes the statistics of a description as one CSV table.
void printDescriptionCsv(const Description& description, std::ostream& out);
/// Writes a description as a JSON document.
void printDescriptionJson(const Description& description, std::ostream& out);
