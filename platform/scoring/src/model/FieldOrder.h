#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include <pugixml.hpp>

namespace scoring {

/// A derived field and the names of the fields that it depends on.
struct DerivedField
{
    std::string name;
    pugi::xml_node element;
    std::unordered_set<std::string> sources;
};

/// The derived field of an element, with its sources.
DerivedField derivedField(pugi::xml_node element);
/// The positions of the fields in the order of evaluation: each field comes after its sources;
/// otherwise the order of the model is kept. Throws ModelFault if fields depend on each other in a
/// circle.
std::vector<std::size_t> orderOf(const std::vector<DerivedField>& fields);

} // namespace scoring
