#pragma once

#include <memory>
#include <string>

#include "render/dataField.h"
#include "support/HvintegExport.h"

/// The fields of a result's data, which need not be variables of the active dataset; a value.
class HVINTEG_EXPORT dataDictionary
{
public:
    dataDictionary();
    dataDictionary(const dataDictionary& other);
    dataDictionary& operator=(const dataDictionary& other);
    ~dataDictionary();

    /// The name of the data model, empty where a document gives none.
    void setName(const std::string& name);
    std::string& getName();
    const std::string& getName() const;
    /// Stores a copy under the field's name, in place of an earlier one.
    void addField(const dataField& field);
    /// A copy of the field of that name; an empty field, without a name, if there is none.
    dataField getField(const std::string& name) const;
    /// The field itself, which lives until the dictionary changes; null if there is none.
    const dataField* findField(const std::string& name) const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
