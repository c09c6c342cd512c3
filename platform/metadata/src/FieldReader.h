#pragma once

#include "CFField.h"
#include "NodeReader.h"

/// The field that an element of a document tells of, with all that is inside it. Throws
/// CFMetaDataError.
CFField readField(const NodeReader& reader, pugi::xml_node node);
