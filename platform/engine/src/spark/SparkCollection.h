#pragma once

#include <memory>
#include <string>

#include "spark/SparkSession.h"
#include "steps/JobContext.h"
#include "steps/Plan.h"

namespace EmbeddedHV {

/// Collects records of the cluster into a table of the job's edge session, for a component, which
/// computes there. `step` is the component, and `fields` are the fields that it reads: no others
/// are sent. Records of more bytes than the setting "engine.collect.bytes" fail the job. Borrows
/// the session and the context.
std::unique_ptr<Stage> collectedRecords(SparkSession& session, JobContext& context,
                                        const std::string& step, const Fields& fields);

} // namespace EmbeddedHV
