#pragma once

#include "EHVAppSetting.h"
#include "runtime/DataSources.h"
#include "runtime/Database.h"
#include "runtime/FileSpace.h"
#include "steps/JobEngine.h"

namespace EmbeddedHV {

/// The resources that the jobs of a service use. The service and its executions share ownership, so
/// an execution can outlive the service.
struct EngineResources
{
    /// Throws Exception, and duck::QueryError if the database does not start.
    explicit EngineResources(const EHVAppSetting& settings);

    FileSpace files;
    std::unique_ptr<Database> database;
    DataSources dataSources;
    std::unique_ptr<JobEngine> engine; ///< of the jobs; may use the database
};

} // namespace EmbeddedHV
