#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

/// JSON that came with a chart or a view, its members in their order.
using PageJson = nlohmann::ordered_json;

/// Reads such a text. Nothing for one that is no JSON, or is nested too deep to be shown.
std::optional<PageJson> parseDocument(const std::string& text);

/// Whether a value is a chart that the page can draw: a Vega-Lite specification, which says so by
/// its schema or is built like one. `depth`: of the views that it lies in.
bool isDrawable(const PageJson& value, int depth = 0);

/// A member of an object; null if there is none, or the value is no object.
const PageJson* memberOf(const PageJson& value, std::string_view name);

/// The features of a GeoJSON text, which may come wrapped as a source; all of it if it has none.
const PageJson& featuresOf(const PageJson& geoJson);

/// As text for a script element.
std::string scriptJson(const PageJson& value);

/// A value that is neither object nor array as it is shown; a number with all its digits.
std::string scalarText(const PageJson& value);
