#pragma once

#include "runtime/Database.h"
#include "runtime/Session.h"

namespace EmbeddedHV {

/// A connection of the embedded database.
class DuckSession final : public Session
{
public:
    /// Borrows the database.
    explicit DuckSession(Database& database) : _database(database), _connection(database.connect())
    {
    }

    const Dialect& dialect() const override;
    void run(const std::string& sql, Cancellation& cancellation, const Progress& progress) override;
    void stream(const std::string& sql, Cancellation& cancellation, const Progress& progress,
                const std::function<void(RecordBatch&)>& take) override;
    void streamLarge(const std::string& sql, Cancellation& cancellation, const Progress& progress,
                     const std::function<void(RecordBatch&)>& take) override;
    std::string tableName(const std::string& table, TableOwner owner) override;
    std::string beginAddition(const std::string& table, const std::string& select) override;
    void endAddition() override { query("COMMIT"); }
    void undoAddition() override { query("ROLLBACK"); }
    void dropTable(const std::string& table, TableOwner owner) override;
    std::string finiteResults(const std::string& select, const ResultColumns& columns) override;
    std::string parquetTable(const std::string& path) const override;
    ParquetColumns parquetColumns(const std::string& path) override;
    void describeColumns(const std::string& path, const std::string& origin,
                         ParquetColumns& columns) override;
    bool hasRejects(const std::string& rejects) override;
    bool hasRejectedValues(const std::string& rejects) override;
    std::unique_ptr<RejectedRecords> rejectedRecords(const std::string& rejects,
                                                     std::int64_t most) override;
    RowSources& rowSources() override { return _database.rowSources(); }
    TextFunctions& textFunctions() override { return _database.textFunctions(); }
    Overflows& overflows() override { return _database.overflows(); }

    duck::Connection& connection() const { return *_connection; }

private:
    duck::Result query(const std::string& sql);

    Database& _database;
    ConnectionLease _connection;
};

/// The connection of a session, which must be a DuckSession.
duck::Connection& connectionOf(Session& session);
/// The chunk of a batch, which must come from a DuckSession.
duck::Chunk& chunkOf(RecordBatch& batch);

} // namespace EmbeddedHV
