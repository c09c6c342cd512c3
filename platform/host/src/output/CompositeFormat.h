#pragma once

#include <string>
#include <string_view>
#include <vector>

/// One part of a composite text: a list of entries, each of them columns of text. A plain text is
/// one entry of one column.
using CompositePart = std::vector<std::vector<std::string>>;

/// Fills the places of a format, as TnComposite describes them.
std::string fillComposite(std::string_view format, const std::vector<CompositePart>& parts);
