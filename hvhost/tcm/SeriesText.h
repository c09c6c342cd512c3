#pragma once

#include <string>
#include <vector>

/// The name of a series: its dimension values, then its metric.
using SeriesName = std::vector<std::string>;

/// As the user writes it: the parts separated by commas, a part with a comma or a double quote
/// enclosed in double quotes.
std::string seriesText(const SeriesName& name);

/// The parts of a series as the user wrote it. Throws CommandFault (Usage) that begins with
/// `option` for a quote without an end and for an empty text.
SeriesName parseSeries(const std::string& text, const std::string& option);
