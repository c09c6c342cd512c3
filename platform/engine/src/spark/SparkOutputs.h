#pragma once

#include <memory>

#include "spark/SparkSession.h"
#include "steps/FileOutput.h"

namespace EmbeddedHV {

/// The records of a SELECT in the types of the fields.
std::string typedSelect(const Fields& fields, const std::string& select);

/// One file, for example CSV or SAV, which this process writes from the records that the cluster
/// returns. Borrows the session and the context. Throws JobError.
std::unique_ptr<Output> streamedFile(SparkSession& session, JobContext& context,
                                     const FileOutputSettings& settings, const Fields& fields);
/// A folder of files, which the workers write. `folder` is its path on the cluster, which differs
/// from the one in the settings for a plain name. Borrows the session and the context. Throws
/// JobError.
std::unique_ptr<Output> clusterFolder(SparkSession& session, JobContext& context,
                                      const FileOutputSettings& settings, std::string folder,
                                      const Fields& fields);

} // namespace EmbeddedHV
