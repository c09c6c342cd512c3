#pragma once

#include <string>
#include <string_view>

#include "VexaDataSource.h"
#include "render/dataDictionary.h"

/// Resolves a name in a result: to a variable of the active dataset, otherwise to a field of the
/// result's dictionary. Names and labels are UTF-8, independent of the host's encoding.
class FieldLookup
{
public:
    /// Both are borrowed; the source may be null.
    FieldLookup(const ProcedureDataSource* source, const dataDictionary& dictionary)
        : _source(source), _dictionary(dictionary)
    {
    }

    /// Removes the prefix that the engine adds to the names of variables that it has derived.
    static std::string nameOf(std::string_view text);
    /// Null if there is no such variable.
    const VEXA_Variable* variable(const std::string& name) const;
    /// Null if there is no such field.
    const dataField* field(const std::string& name) const;

    /// The variable's label, or its name if the label is empty.
    static std::string preferredLabel(const VEXA_Variable& variable);
    /// The label of a value; empty if it has none.
    static std::string valueLabel(const VEXA_Variable& variable, double value);
    static std::string valueLabel(const VEXA_Variable& variable, const std::string& value);

private:
    const ProcedureDataSource* _source;
    const dataDictionary& _dictionary;
};
