#pragma once

#include "duckdb/DuckSession.h"
#include "steps/JobEngine.h"

namespace EmbeddedHV {

/// Jobs on the embedded database.
class DuckEngine final : public JobEngine
{
public:
    /// Borrows the database.
    explicit DuckEngine(Database& database) : _database(database) {}

    std::unique_ptr<Session> newSession() override
    {
        return std::make_unique<DuckSession>(_database);
    }
    std::unique_ptr<const DataFiles> newFiles(Session&, const FileSpace&) override
    {
        return localFiles();
    }

private:
    Database& _database;
};

} // namespace EmbeddedHV
