#pragma once

#include <optional>
#include <string>

#include "DataFileNames.h"
#include "datafile/FileTables.h"
#include "steps/StepCall.h"

namespace EmbeddedHV {

/// What a read step says about a SAV or HVBF file.
struct ParquetReadSettings
{
    std::string path;
    FileKind kind = FileKind::Hvbf;
    std::string password;            ///< SAV only; empty if none is given
    std::optional<Fields> dataModel; ///< from a document beside the file
};

/// The records of a Parquet file. The data model comes from the document, else from the file; what
/// neither knows follows from the column types.
NodePtr planParquet(JobContext& context, const ParquetReadSettings& settings);

} // namespace EmbeddedHV
