#pragma once

#include <string>
#include <vector>

#include "DataFileNames.h"
#include "datafile/FieldMetadata.h"
#include "datafile/FieldNames.h"
#include "expression/Schema.h"

namespace EmbeddedHV {

/// The data model document of the fields.
std::string dataModelOf(const Fields& fields);
/// The fields of a document. Throws JobError with `errorId`; `origin` says whose document it is.
Fields fieldsOfDataModel(const std::string& xml, const std::string& origin, const char* errorId);

std::vector<CFField::StorageType> storagesOf(const Fields& fields);

/// The fields as expressions see them.
Schema schemaOf(const Fields& fields);
/// Null if there is no such field; letter case counts.
const CFField* findField(const Fields& fields, const std::string& name);
/// The same, but letter case does not count, as it does not in the database's columns.
const CFField* findFieldAnyCase(const Fields& fields, const std::string& name);

} // namespace EmbeddedHV
