#pragma once

#include <cstddef>
#include <string>

#include <nlohmann/json.hpp>

// Parts of a result document that commands compose.

/// A text that the host translates, if its string table has it.
nlohmann::ordered_json textItem(const std::string& text);

/// A text of the data. The host does not look it up among its own texts.
nlohmann::ordered_json plainItem(const std::string& text);

/// The number of digits in a cell key for each of so many leaves.
std::size_t cellDigitsFor(std::size_t leaves);
/// The part of a cell key for a leaf, counted from 0.
std::string cellDigits(std::size_t leaf, std::size_t digits);

/// A dimension of a table without categories. `role` is "row" or "column".
nlohmann::ordered_json dimensionItem(const std::string& name, const char* role, bool hidesName);
