#pragma once

#include <string>
#include <vector>

/// Splits a text at its dots. Drops empty segments.
std::vector<std::string> segmentsOf(const std::string& path);
