#pragma once

#include <optional>
#include <string>

#include "DataFileNames.h"
#include "datafile/FileKind.h"
#include "steps/StepCall.h"

namespace EmbeddedHV {

/// The settings of a read step for a SAV or HVBF file.
struct ParquetReadSettings
{
    std::string path;
    FileKind kind = FileKind::Hvbf;
    std::string password;            ///< SAV only; empty for a file that is not sealed
    std::optional<Fields> dataModel; ///< from a data model document next to the file
};

/// Plans the reading of a Parquet file. The data model comes from the document, else from the file.
/// Anything that both lack follows from the column types.
NodePtr planParquet(JobContext& context, const ParquetReadSettings& settings);

} // namespace EmbeddedHV
