#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

/// JSON of a chart or view, with its members in order.
using PageJson = nlohmann::ordered_json;

/// Parses such a text. nullopt if it is invalid or nested too deep.
std::optional<PageJson> parseDocument(const std::string& text);

/// Whether a value is a chart that the page can draw: a Vega-Lite specification, by its schema or
/// structure. `depth` is the number of enclosing views.
bool isDrawable(const PageJson& value, int depth = 0);

/// A member of an object; null if it is missing or the value is not an object.
const PageJson* memberOf(const PageJson& value, std::string_view name);

/// The features of a GeoJSON text, which may be wrapped in a source; the whole text if it has none.
const PageJson& featuresOf(const PageJson& geoJson);

/// JSON text for a script element.
std::string scriptJson(const PageJson& value);

/// The text for a scalar value; a number with all its digits.
std::string scalarText(const PageJson& value);
