#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

#include "CFField.h"
#include "CFUpperFunc.h"
#include "MetadataExport.h"

/// A data model document cannot be read. The text gives the problem and the line.
class METADATA_API CFMetaDataError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// The fields of a data set, in order; names are unique. Its XML form is the data model document,
/// described in docs/data-model.md. A value type: copies are independent, and any number of threads
/// may read one object.
///
///     CFMetaData model;
///     model.AppendField(CFField("age", CFField::Continuous, CFField::Integer));
///     std::string xml;
///     model.ExportXMLDoc(xml);
///     CFMetaData same(xml);
class METADATA_API CFMetaData
{
public:
    /// A data model without fields.
    CFMetaData() = default;
    /// Reads a document completely or throws CFMetaDataError. With `upper`, look-up by name ignores
    /// letter case; it is borrowed by the object and its copies.
    explicit CFMetaData(const std::string& xml, const CFUpperFunc* upper = nullptr);

    /// Appends a copy of the field. Throws CFMetaDataError if the name exists.
    void AppendField(const CFField& field);
    /// Replaces a field by one of the same name. Throws std::out_of_range for an invalid index and
    /// CFMetaDataError for another name.
    void ReplaceField(std::size_t index, const CFField& field);
    /// The number of fields.
    std::size_t FieldCount() const { return _fields.size(); }
    /// The field at an index; null if the index is invalid. Valid until the next change.
    const CFField* GetField(std::size_t index) const;
    /// The field of that name; null if there is no such field. Valid until the next change.
    const CFField* GetField(const std::string& name) const;
    /// The index of a field; -1 if there is no such field. An exact match is preferred. Otherwise,
    /// with an upper-case function, the first field that differs only in letter case is returned.
    int GetFieldIndex(const std::string& name) const;
    /// Replaces `xml` by the document. Reading it gives the same fields.
    void ExportXMLDoc(std::string& xml) const;

private:
    std::vector<CFField> _fields;
    std::unordered_map<std::string, std::size_t> _byName;
    std::unordered_map<std::string, std::size_t> _byUpperName;
    const CFUpperFunc* _upper = nullptr;
};
