#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

#include "CFField.h"
#include "CFUpperFunc.h"
#include "MetadataExport.h"

/// A data model document that cannot be read; says what is wrong and in which line.
class METADATA_API CFMetaDataError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// The fields of a data set, in order; names are unique. Its XML form is the data model document,
/// docs/data-model.md. A value type; a copy goes its own way, and any number of threads may read
/// one object.
///
///     CFMetaData model;
///     model.AppendField(CFField("age", CFField::Continuous, CFField::Integer));
///     std::string xml;
///     model.ExportXMLDoc(xml);
///     CFMetaData same(xml);
class METADATA_API CFMetaData
{
public:
    CFMetaData() = default;
    /// Reads a document, whole or not at all. Throws CFMetaDataError. The function is borrowed for
    /// as long as the object or a copy of it looks fields up.
    explicit CFMetaData(const std::string& xml, const CFUpperFunc* upper = nullptr);

    /// Throws CFMetaDataError for a name that is taken.
    void AppendField(const CFField& field);
    /// Puts a field of the same name in the place of one; std::out_of_range past the end and
    /// CFMetaDataError for another name.
    void ReplaceField(std::size_t index, const CFField& field);
    std::size_t FieldCount() const { return _fields.size(); }
    /// Null past the end, or if there is no such field. Valid until the next change.
    const CFField* GetField(std::size_t index) const;
    const CFField* GetField(const std::string& name) const;
    /// -1 if there is no such field. With an upper-casing function the case of letters is ignored
    /// where no name is the very same; of several such fields the first one counts.
    int GetFieldIndex(const std::string& name) const;
    /// Replaces `xml` with the document, which CFMetaData reads back to the same fields.
    void ExportXMLDoc(std::string& xml) const;

private:
    std::vector<CFField> _fields;
    std::unordered_map<std::string, std::size_t> _byName;
    std::unordered_map<std::string, std::size_t> _byUpperName;
    const CFUpperFunc* _upper = nullptr;
};
