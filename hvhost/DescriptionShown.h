#pragma once

#include <iosfwd>
#include <string>

struct Description;

/// Shows a description: as tables for people that are up to `width` columns wide, as one CSV table
/// of the statistics, or as a JSON document.
void printDescriptionText(const Description& description, std::size_t width, std::ostream& out);
void printDescriptionCsv(const Description& description, std::ostream& out);
void printDescriptionJson(const Description& description, std::ostream& out);
