#pragma once

#include <istream>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

#include "expression/Interval.h"

namespace scoring {

/// A PMML document, read whole.
class PmmlDocument
{
public:
    /// Throws ModelFault for a text that is no PMML of version 4, and for one that declares a
    /// document type: entities are nothing a model needs.
    explicit PmmlDocument(std::istream& stream);
    pugi::xml_node root() const { return _document.document_element(); }

private:
    pugi::xml_document _document;
};

/// The name without a prefix of a namespace.
std::string_view localName(pugi::xml_node node);
/// The elements in a node, or those of one name; extensions of other makers are passed over.
std::vector<pugi::xml_node> elementsIn(pugi::xml_node node);
std::vector<pugi::xml_node> elementsIn(pugi::xml_node node, std::string_view name);
/// The first of a name; empty if there is none.
pugi::xml_node elementIn(pugi::xml_node node, std::string_view name);

/// All text of an element: with blanks, CDATA sections and what stands on both sides of a comment.
std::string textOf(pugi::xml_node element);

/// An attribute without which the element has no meaning. Throws ModelFault.
std::string required(pugi::xml_node node, const char* attribute);
double requiredNumber(pugi::xml_node node, const char* attribute);
/// Throws ModelFault for an interval without a closure, or with margins that are no numbers.
Interval intervalOf(pugi::xml_node node);

} // namespace scoring
