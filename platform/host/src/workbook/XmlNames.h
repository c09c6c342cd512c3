#pragma once

#include <string>
#include <string_view>

#include <pugixml.hpp>

/// Small documents of a workbook as trees. Producers choose different namespace prefixes, so names
/// are compared without them.

/// Throws WorkbookFault for invalid XML. Document types are not read.
pugi::xml_document parsedXml(const std::string& text);

/// The part of a name after the prefix.
std::string_view localName(const char* name);

/// The first child with this name. An empty node if no child has it.
pugi::xml_node childNamed(const pugi::xml_node& parent, std::string_view name);

/// The value of the attribute with this name; empty if it is missing.
std::string attributeNamed(const pugi::xml_node& node, std::string_view name);
