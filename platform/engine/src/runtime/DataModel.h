#pragma once

#include <string>
#include <vector>

#include "DataFileNames.h"
#include "datafile/FieldNames.h"
#include "expression/Schema.h"

namespace EmbeddedHV {

/// A field with the measure that its storage suggests, an input of an analysis.
CFField plainField(const std::string& name, CFField::StorageType storage);

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

/// Gives a field another storage. What is known of its values stays where they remain comparable,
/// as integer and real numbers do; else only measure, role and label stay.
void changeStorage(CFField& field, CFField::StorageType storage);

/// The part of a data model that the names have in common with the fields: all but the storage of
/// each field whose name stands in `model`.
void adoptMetadata(Fields& fields, const Fields& model);

} // namespace EmbeddedHV
