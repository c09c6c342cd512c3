#pragma once

#include "EHVAppSetting.h"
#include "runtime/DataSources.h"
#include "runtime/Database.h"
#include "runtime/FileSpace.h"

namespace EmbeddedHV {

/// What the jobs of one service work on. The service and each of its executions own it together, so
/// that an execution can outlive the service.
struct EngineResources
{
    /// Throws Exception, and duck::QueryError if the database does not start.
    explicit EngineResources(const EHVAppSetting& settings);

    FileSpace files;
    std::unique_ptr<Database> database;
    DataSources dataSources;
};

} // namespace EmbeddedHV
