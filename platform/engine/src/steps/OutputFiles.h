#pragma once

#include <optional>
#include <string>

#include "DataFileNames.h"
#include "datafile/PendingFile.h"
#include "steps/JobContext.h"

namespace EmbeddedHV {

/// A data file under construction and its data model document. Both get their names when both are
/// whole.
class OutputFiles
{
public:
    /// Looks at the destinations, makes nothing yet; an empty `modelPath` is none. Throws JobError.
    OutputFiles(const std::string& path, const std::string& modelPath, const std::string& step);

    /// Where to write the data.
    const std::string& dataPath() { return _data.path(); }
    const std::string& destination() const { return _data.destination(); }
    /// Tells the job that the destinations are yet to be written. Throws JobError if one has a file
    /// that the job may not replace.
    void announce(JobContext& context) const;
    /// Writes the document and names both files. Throws JobError.
    void commit(JobContext& context, const Fields& fields);

private:
    std::string _step;
    PendingFile _data;
    std::optional<PendingFile> _model;
};

} // namespace EmbeddedHV
