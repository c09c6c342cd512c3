#pragma once

#include <optional>
#include <string>

#include <pugixml.hpp>

namespace EmbeddedHV {

/// A text without the characters that XML has no place for, each written as `_xHHHH_` in the way of
/// data model documents. The underscore of what could be read as such a sequence is written so too.
std::string xmlText(const std::string& text);
/// The shortest text that reads back as the same number.
std::string numberText(double value);

/// Attributes of the statistics; one that is absent is left out.
void addAttribute(pugi::xml_node& node, const char* name, const std::string& value);
void addAttribute(pugi::xml_node& node, const char* name, std::optional<double> value);

/// The element with all inside it as indented text, without a declaration.
std::string textOf(const pugi::xml_node& node);

} // namespace EmbeddedHV
