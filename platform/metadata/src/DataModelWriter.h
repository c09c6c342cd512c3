#pragma once

#include <string>

#include "CFMetaData.h"

/// The data model document of the fields: one `<DataModel>` element without an XML declaration, so
/// that it can be part of a larger document.
std::string writeDataModel(const CFMetaData& metaData);
