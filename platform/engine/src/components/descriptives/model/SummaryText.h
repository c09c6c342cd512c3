#pragma once

#include <optional>
#include <string>

#include <pugixml.hpp>

namespace EmbeddedHV {

/// Replaces each character that XML does not allow with `_xHHHH_`, as data model documents do. An
/// underscore that would begin such a sequence is replaced too.
std::string xmlText(const std::string& text);
/// The shortest text that converts back to the same number.
std::string numberText(double value);

/// Adds an attribute. An empty value adds none.
void addAttribute(pugi::xml_node& node, const char* name, const std::string& value);
/// Adds an attribute. An empty value adds none.
void addAttribute(pugi::xml_node& node, const char* name, std::optional<double> value);

/// The element and its content as indented text, without an XML declaration.
std::string textOf(const pugi::xml_node& node);

} // namespace EmbeddedHV
