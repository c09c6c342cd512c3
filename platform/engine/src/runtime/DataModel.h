#pragma once

#include <string>
#include <vector>

#include "DataFileNames.h"
#include "datafile/FieldMetadata.h"
#include "datafile/FieldNames.h"
#include "expression/Schema.h"

namespace EmbeddedHV {

/// The fields as a data model document.
std::string dataModelOf(const Fields& fields);
/// The fields of a data model document. Throws JobError with `errorId`. `origin` describes the
/// document in the error text.
Fields fieldsOfDataModel(const std::string& xml, const std::string& origin, const char* errorId);

std::vector<CFField::StorageType> storagesOf(const Fields& fields);

/// The schema of the fields, for expressions.
Schema schemaOf(const Fields& fields);
/// The field with this name, or null. Case-sensitive.
const CFField* findField(const Fields& fields, const std::string& name);
/// The field with this name, or null. Ignores case, as the database does for columns.
const CFField* findFieldAnyCase(const Fields& fields, const std::string& name);
/// A column list: quoted names, separated by commas.
std::string columnList(const Fields& fields);
/// A name for an internal column that no field has.
std::string unusedName(const Fields& fields, const std::string& base);

} // namespace EmbeddedHV
