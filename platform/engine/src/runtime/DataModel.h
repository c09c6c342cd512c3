#pragma once

#include <optional>
#include <string>
#include <unordered_map>
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
/// The places of fields by their names, for many look-ups in a long list. Case-sensitive.
class FieldIndex
{
public:
    FieldIndex() = default;
    explicit FieldIndex(const Fields& fields);

    /// Adds the name of the next field. Returns false if the name is known already.
    bool add(const std::string& name) { return _places.emplace(name, _places.size()).second; }
    /// The place of the field, from 0; empty if no field has this name.
    std::optional<std::size_t> place(const std::string& name) const;

private:
    std::unordered_map<std::string, std::size_t> _places;
};

/// The field with this name, or null. Case-sensitive. Compares one field after the other.
const CFField* findField(const Fields& fields, const std::string& name);
/// The field with this name, or null. Ignores case, as the database does for columns.
const CFField* findFieldAnyCase(const Fields& fields, const std::string& name);
/// A column list: quoted names, separated by commas.
std::string columnList(const Fields& fields);
/// A name for an internal column that no field has.
std::string unusedName(const Fields& fields, const std::string& base);

} // namespace EmbeddedHV
