#pragma once

#include <pugixml.hpp>

#include "CFField.h"

/// Appends the element of a field, of the given name, with all that the field holds.
void writeField(pugi::xml_node parent, const char* element, const CFField& field);
