#pragma once

#include <string>

#include "spark/SparkSession.h"
#include "steps/CsvRead.h"

namespace EmbeddedHV {

/// Plans the reading of a CSV file by the workers. A statement determines the types of its fields
/// from all its records. Borrows the session. Throws JobError.
NodePtr planClusterCsv(SparkSession& session, JobContext& context, const CsvReadSettings& settings);

/// The error of a statement that reads a file of the cluster.
JobError clusterFileFault(const StatementFault& fault, const std::string& path,
                          const std::string& step);

} // namespace EmbeddedHV
