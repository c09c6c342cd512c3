#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include <pugixml.hpp>

namespace scoring {

/// A derived field with the names of the fields that it is made from.
struct DerivedField
{
    std::string name;
    pugi::xml_node element;
    std::unordered_set<std::string> sources;
};

/// The derived field of an element, with its sources.
DerivedField derivedField(pugi::xml_node element);
/// The positions of the fields, each behind all that it is made from, and in the order of the model
/// otherwise. Throws ModelFault where fields are made from each other.
std::vector<std::size_t> orderOf(const std::vector<DerivedField>& fields);

} // namespace scoring
