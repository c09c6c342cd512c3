#pragma once

#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

#include "expression/Interval.h"

namespace scoring {

/// A parsed PMML document.
class PmmlDocument
{
public:
    /// Throws ModelFault if the text is not PMML of version 4, or if it declares a document type: a
    /// model needs no entities.
    explicit PmmlDocument(std::istream& stream);
    pugi::xml_node root() const { return _document.document_element(); }

private:
    pugi::xml_document _document;
};

/// The name without its namespace prefix.
std::string_view localName(pugi::xml_node node);
/// The child elements of a node. Skips extensions of other makers.
std::vector<pugi::xml_node> elementsIn(pugi::xml_node node);
/// The child elements with a name.
std::vector<pugi::xml_node> elementsIn(pugi::xml_node node, std::string_view name);
/// The first child element with a name, or empty.
pugi::xml_node elementIn(pugi::xml_node node, std::string_view name);

/// The whole text of an element, including blanks, CDATA sections and the text after comments.
std::string textOf(pugi::xml_node element);

/// The value of an attribute. Throws ModelFault if it is absent.
std::string required(pugi::xml_node node, const char* attribute);
/// The number in an attribute. Throws ModelFault if it is absent or no number.
double requiredNumber(pugi::xml_node node, const char* attribute);
/// Reads an interval. Throws ModelFault if it has no closure or its margins are not numbers.
Interval intervalOf(pugi::xml_node node);

} // namespace scoring
