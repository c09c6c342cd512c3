#pragma once

#include <string>
#include <vector>

/// The segments of a text with dots between them. Empty ones count for nothing, so two dots in a
/// row are one, and dots at either end none.
std::vector<std::string> segmentsOf(const std::string& path);
