#pragma once

#include <string>
#include <string_view>

#include "VexaDataSource.h"
#include "render/dataDictionary.h"

/// Finds what a name in a result stands for: a variable of the active dataset, or else a field of
/// the result's own dictionary. Names and labels are UTF-8, whatever the host's encoding.
class FieldLookup
{
public:
    /// Both are borrowed; the source may be null.
    FieldLookup(const ProcedureDataSource* source, const dataDictionary& dictionary)
        : _source(source), _dictionary(dictionary)
    {
    }

    /// The name without the prefix that the engine gives to variables it has derived for itself.
    static std::string nameOf(std::string_view text);
    /// Null if there is none.
    const VEXA_Variable* variable(const std::string& name) const;
    const dataField* field(const std::string& name) const;

    /// The variable's label, or its name where it has none.
    static std::string preferredLabel(const VEXA_Variable& variable);
    /// Empty if the value has no label.
    static std::string valueLabel(const VEXA_Variable& variable, double value);
    static std::string valueLabel(const VEXA_Variable& variable, const std::string& value);

private:
    const ProcedureDataSource* _source;
    const dataDictionary& _dictionary;
};
