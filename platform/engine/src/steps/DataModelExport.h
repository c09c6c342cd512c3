#pragma once

#include <memory>
#include <string>
#include <vector>

#include "DataFileNames.h"
#include "datafile/PendingFile.h"
#include "steps/Plan.h"

namespace EmbeddedHV {

/// A data model document that a step exports. It is written when the records have gone through the
/// step, since until then a source may find out that its fields have other types.
class DataModelExport
{
public:
    /// Looks at the destination, makes nothing yet. Throws JobError.
    DataModelExport(const std::string& path, const std::string& step, const Fields& fields);

    const std::string& path() const { return _file.destination(); }
    bool isCommitted() const { return _isCommitted; }
    /// Writes the document under its name. Throws JobError.
    void commit();
    /// Takes a committed document away again.
    void revoke();

private:
    PendingFile _file;
    std::string _document;
    bool _isCommitted = false;
};

/// The documents that are yet to be written of all steps that the relation is made by.
std::vector<std::shared_ptr<DataModelExport>> exportsOf(Node& node);

/// Throws JobError if two things that the statement writes would be one file.
void checkTargets(const Statement& statement);

} // namespace EmbeddedHV
