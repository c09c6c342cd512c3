#pragma once

#include <optional>
#include <string>

#include "DataFileNames.h"
#include "datafile/PendingFile.h"
#include "steps/JobContext.h"

namespace EmbeddedHV {

/// A data file and its data model document while they are written. Both get their final names after
/// both are complete.
class OutputFiles
{
public:
    /// Checks the destinations. Creates no file yet. An empty `modelPath` means no document. Throws
    /// JobError.
    OutputFiles(const std::string& path, const std::string& modelPath, const std::string& step);

    /// The temporary path for the data.
    const std::string& dataPath() { return _data.path(); }
    const std::string& destination() const { return _data.destination(); }
    /// Tells the job that it will write the destinations. Throws JobError if a destination exists
    /// and the job may not replace it.
    void announce(JobContext& context) const;
    /// Writes the document and gives both files their final names. Throws JobError.
    void commit(JobContext& context, const Fields& fields);

private:
    std::string _step;
    PendingFile _data;
    std::optional<PendingFile> _model;
};

} // namespace EmbeddedHV
