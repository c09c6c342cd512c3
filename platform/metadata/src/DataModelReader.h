#pragma once

#include <string>

#include "CFMetaData.h"

/// Appends the fields of a data model document. Requires what a data model needs and ignores
/// unknown elements and attributes. Throws CFMetaDataError with the line.
void readDataModel(const std::string& xml, CFMetaData& metaData);
