#pragma once

#include "CFField.h"
#include "NodeReader.h"

/// Reads a field from its element, with everything inside it. Throws CFMetaDataError.
CFField readField(const NodeReader& reader, pugi::xml_node node);
