#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "steps/StepCall.h"

namespace EmbeddedHV {

/// What a read step says about a CSV file.
struct CsvReadSettings
{
    std::string path;
    bool hasHeader = false;
    std::int64_t errorThreshold = 0; ///< bad records that are skipped; below 0: any number
    std::uint64_t mostRecords = UINT64_MAX;
    std::optional<Fields> dataModel; ///< from a document beside the file
};

/// The records of a CSV file. Without a data model the types are those that the values of the whole
/// file allow: guessed from its head, confirmed while the job runs.
NodePtr planCsv(JobContext& context, const CsvReadSettings& settings);

} // namespace EmbeddedHV
