#pragma once

#include <memory>
#include <string>
#include <vector>

#include "DataFileNames.h"
#include "datafile/PendingFile.h"
#include "steps/Plan.h"

namespace EmbeddedHV {

/// A data model document that a step exports. It is written after the records have passed the step,
/// because until then the types of a source's fields may change.
class DataModelExport
{
public:
    /// Checks the destination. Creates no file yet. Throws JobError.
    DataModelExport(const std::string& path, const std::string& step, const Fields& fields);

    const std::string& path() const { return _file.destination(); }
    bool isCommitted() const { return _isCommitted; }
    /// Writes the document under its final name. Throws JobError.
    void commit();
    /// Removes a committed document.
    void revoke();

private:
    PendingFile _file;
    std::string _document;
    bool _isCommitted = false;
};

/// The uncommitted documents of all steps that contribute to the relation.
std::vector<std::shared_ptr<DataModelExport>> exportsOf(Node& node);

/// Throws JobError if the statement would write two outputs to the same file.
void checkTargets(const Statement& statement);

} // namespace EmbeddedHV
