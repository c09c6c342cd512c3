#pragma once

#include <duckdb.h>

#include <memory>
#include <mutex>
#include <vector>

#include "DataFileNames.h"
#include "EHVAppSetting.h"
#include "datafile/Duck.h"
#include "datafile/PrivateFolder.h"
#include "runtime/Overflows.h"
#include "runtime/RowSources.h"
#include "runtime/TextFunctions.h"

namespace EmbeddedHV {

class Database;

/// A connection on loan from the database. The destructor returns it. The borrower drops the
/// temporary tables that it made.
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

/// The only database instance of the process, in memory. Any thread may borrow a connection.
class Database
{
public:
    /// Opens the instance. Throws duck::QueryError.
    Database();
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database();

    /// Applies the engine's settings for threads and the spill folder. Throws duck::QueryError.
    void configure(const EHVAppSetting& settings);
    ConnectionLease connect();
    /// The sources that statements can read now.
    RowSources& rowSources() { return _rowSources; }
    /// The functions that statements can use now.
    TextFunctions& textFunctions() { return _textFunctions; }
    /// The counts of values that exceed the range of a double.
    Overflows& overflows() { return _overflows; }

private:
    friend class ConnectionLease;
    void registerFunctions();
    void close();
    /// Does not allocate, because destructors call it.
    void takeBack(std::unique_ptr<duck::Connection> connection) noexcept;

    datafile::PrivateFolder
        _spills; ///< the folder of the database's spill files; outlives the database
    duckdb_database _database = nullptr;
    RowSources _rowSources;
    TextFunctions _textFunctions;
    Overflows _overflows;
    std::mutex _mutex;
    std::vector<std::unique_ptr<duck::Connection>> _idle;
    std::size_t _made = 0; ///< number of connections; _idle has room for all of them
};

/// The instance that preload opened, or a new one.
std::unique_ptr<Database> adoptDatabase();

} // namespace EmbeddedHV
