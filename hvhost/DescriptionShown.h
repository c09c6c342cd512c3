#pragma once

#include <iosfwd>

struct Description;

/// Writes a description for programs: as one CSV table of the statistics, or as a JSON document.
void printDescriptionCsv(const Description& description, std::ostream& out);
void printDescriptionJson(const Description& description, std::ostream& out);
