#pragma once

#include <string>

#include "CFMetaData.h"

/// Appends the fields of a data model document. Strict about what a data model needs, tolerant of
/// elements and attributes that it does not know. Throws CFMetaDataError, which names the line.
void readDataModel(const std::string& xml, CFMetaData& metaData);
