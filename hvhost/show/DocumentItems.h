#pragma once

#include <string>

#include <nlohmann/json.hpp>

// Parts of a result document that commands compose.

/// A text that is shown unchanged.
nlohmann::ordered_json textItem(const std::string& text);

/// A dimension of a table without categories. `role` is "row" or "column".
nlohmann::ordered_json dimensionItem(const std::string& name, const char* role, bool hidesName);
