#pragma once

#include <pugixml.hpp>

#include "CFField.h"

/// Appends an element of the given name with everything in the field.
void writeField(pugi::xml_node parent, const char* element, const CFField& field);
