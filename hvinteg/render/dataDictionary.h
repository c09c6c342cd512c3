#pragma once

#include <memory>
#include <string>

#include "render/dataField.h"
#include "support/HvintegExport.h"

/// The fields of a result's data, which may differ from the variables of the active dataset. A
/// value type. Texts are UTF-8.
class HVINTEG_EXPORT dataDictionary
{
public:
    /// Creates an empty dictionary.
    dataDictionary();
    /// Copies name and fields.
    dataDictionary(const dataDictionary& other);
    /// Replaces name and fields.
    dataDictionary& operator=(const dataDictionary& other);
    ~dataDictionary();

    /// Sets the name of the data model.
    void setName(const std::string& name);
    /// The name, for changes; empty if the document has none.
    std::string& getName();
    /// The name; empty if the document has none.
    const std::string& getName() const;
    /// Stores a copy under the field's name and replaces an earlier one.
    void addField(const dataField& field);
    /// Returns a copy of the field of that name, or an empty field without a name.
    dataField getField(const std::string& name) const;
    /// The field itself, valid until the dictionary changes; null if there is no such field.
    const dataField* findField(const std::string& name) const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
