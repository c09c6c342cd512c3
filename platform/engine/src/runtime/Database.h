#pragma once

#include <duckdb.h>

#include <memory>
#include <mutex>
#include <vector>

#include "DataFileNames.h"
#include "EHVAppSetting.h"
#include "datafile/Duck.h"
#include "datafile/PrivateFolder.h"
#include "maps/Reprojections.h"
#include "runtime/RowSources.h"

namespace EmbeddedHV {

class Database;

/// A connection borrowed from the database; it goes back when the lease ends. What the borrower
/// left in it (temporary tables) is the borrower's to drop.
class ConnectionLease
{
public:
    ConnectionLease(Database& database, std::unique_ptr<duck::Connection> connection)
        : _database(&database), _connection(std::move(connection))
    {
    }
    ConnectionLease(ConnectionLease&&) = default;
    ConnectionLease& operator=(ConnectionLease&&) = delete;
    ~ConnectionLease();

    duck::Connection& operator*() const { return *_connection; }
    duck::Connection* operator->() const { return _connection.get(); }

private:
    Database* _database;
    std::unique_ptr<duck::Connection> _connection;
};

/// The one database instance of the process, in memory. Any thread may lease a connection.
class Database
{
public:
    /// Opens the instance. Throws duck::QueryError.
    Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database();

    /// Threads and spill folder from the engine's start-up settings. Throws duck::QueryError.
    void configure(const EHVAppSetting& settings);
    ConnectionLease connect();
    /// What statements can read, and how they can move shapes, just now.
    RowSources& rowSources() { return _rowSources; }
    Reprojections& reprojections() { return _reprojections; }

private:
    friend class ConnectionLease;
    void registerFunctions();
    void close();
    /// Allocates nothing, since leases end in destructors.
    void takeBack(std::unique_ptr<duck::Connection> connection) noexcept;

    datafile::PrivateFolder _spills; ///< what the database puts aside; outlives it
    duckdb_database _database = nullptr;
    RowSources _rowSources;
    Reprojections _reprojections;
    std::mutex _mutex;
    std::vector<std::unique_ptr<duck::Connection>> _idle;
    std::size_t _made = 0; ///< connections; _idle has room for all of them
};

/// The instance that preload opened, or a new one.
std::unique_ptr<Database> adoptDatabase();

} // namespace EmbeddedHV
