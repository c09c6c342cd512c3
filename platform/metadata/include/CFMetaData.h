#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

#include "CFField.h"
#include "MetadataExport.h"

/// Maps a field name to its upper-case form for lookups without regard to letter case.
using CFUpperFunc = std::string(const std::string&);

/// A data model document that cannot be read; says what is wrong and where.
class METADATA_API CFMetaDataError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// The fields of a data set, in order; names are unique. Its XML form is the data model document,
/// docs/data-model.md.
class METADATA_API CFMetaData
{
public:
    CFMetaData() = default;
    /// Reads a document. Throws CFMetaDataError. The function is kept for lookups.
    explicit CFMetaData(const std::string& xml, CFUpperFunc* upper = nullptr);

    /// Throws CFMetaDataError for a name that is taken.
    void AppendField(const CFField& field);
    std::size_t FieldCount() const { return _fields.size(); }
    /// Null past the end.
    const CFField* GetField(std::size_t index) const;
    /// -1 if there is no such field. With an upper-casing function the case of letters is ignored
    /// where no name is the very same; of several such fields the first one counts.
    int GetFieldIndex(const std::string& name) const;
    /// Replaces `xml` with the document.
    void ExportXMLDoc(std::string& xml) const;

private:
    std::vector<CFField> _fields;
    std::unordered_map<std::string, std::size_t> _byName;
    std::unordered_map<std::string, std::size_t> _byUpperName;
    CFUpperFunc* _upper = nullptr;
};
