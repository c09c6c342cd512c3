#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "steps/StepCall.h"

namespace EmbeddedHV {

/// The settings of a read step for a CSV file.
struct CsvReadSettings
{
    std::string path;
    bool hasHeader = false;
    std::int64_t errorThreshold =
        0; ///< number of bad records that are skipped; negative: any number
    std::uint64_t mostRecords = UINT64_MAX;
    std::optional<Fields> dataModel; ///< from a data model document next to the file
};

/// Plans the reading of a CSV file. Without a data model, the types follow from the values of the
/// whole file: they are guessed from its head and checked while the job runs.
NodePtr planCsv(JobContext& context, const CsvReadSettings& settings);

} // namespace EmbeddedHV
