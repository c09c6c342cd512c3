#pragma once

#include <string>
#include <string_view>
#include <vector>

/// One part of a composite text: a list of entries with columns of text. A plain text is one entry
/// with one column.
using CompositePart = std::vector<std::vector<std::string>>;

/// Replaces the placeholders of a format, as TnComposite describes.
std::string fillComposite(std::string_view format, const std::vector<CompositePart>& parts);
