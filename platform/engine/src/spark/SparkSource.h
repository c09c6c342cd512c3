#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "spark/SparkSession.h"
#include "steps/JobContext.h"
#include "steps/Plan.h"

namespace EmbeddedHV {

/// Records of this process that the embedded database reads and the session sends to the cluster.
struct SentRecords
{
    /// The context in which the relation was planned on the embedded database. Null: the job's own
    /// edge session reads it.
    std::shared_ptr<JobContext> context;
    NodePtr relation;
    std::string name; ///< for messages, for example the path of a file
    /// The error of the source, if it has failed. May be empty.
    std::function<std::optional<JobError>()> failure = {};
};

/// A relation of the cluster with these records, which are sent before the first statement that
/// reads them. Borrows the session.
NodePtr sentNode(SparkSession& session, SentRecords records);

} // namespace EmbeddedHV
