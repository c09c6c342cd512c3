#include "runtime/Database.h"

#include <cstdlib>
#include <system_error>

#include "EngineException.h"
#include "base/NativePath.h"
#include "datafile/SqlQuoting.h"
#include "runtime/CompensatedSums.h"
#include "runtime/ExactSums.h"
#include "runtime/FiniteReals.h"
#include "runtime/KeyedCells.h"
#include "runtime/SampleSpread.h"

namespace EmbeddedHV {
namespace {

/// Compute the progress from the start, but never print it.
constexpr const char* kConnectionOptions[] = {
    "SET enable_progress_bar = true",
    "SET enable_progress_bar_print = false",
    "SET progress_bar_time = 0",
};

/// Processes may share a temporary folder. Each needs its own spill folder, because the database
/// uses the same file names in each process.
datafile::PrivateFolder newSpillFolder(const std::string& parent)
{
    std::error_code ignored; // the next call reports the error
    datafile::makeOwnersFolders(parent, ignored);
    try {
        return {parent, "hv-spill-"};
    } catch (const std::system_error& error) {
        throw Exception("the engine cannot make its folder for temporary files in " + parent +
                        ": " + error.code().message());
    }
}

} // namespace

ConnectionLease::~ConnectionLease()
{
    if (_connection)
        _database->takeBack(std::move(_connection));
}

Database::Database() : _database(duck::openInMemory())
{
    try {
        registerFunctions();
    } catch (...) {
        close();
        throw;
    }
}

void Database::registerFunctions()
{
    // A registration on any connection is valid for the whole instance.
    auto connection = connect();
    _rowSources.registerFunction(*connection);
    _textFunctions.registerFunction(*connection);
    _overflows.registerFunction(*connection);
    registerFiniteReals(*connection);
    registerCompensatedSums(*connection);
    registerExactSum(*connection);
    registerKeyedCells(*connection);
    registerSampleSpread(*connection);
}

Database::~Database()
{
    close();
}

void Database::close()
{
    // Close the connections first: the instance must not be closed while one is open.
    _idle.clear();
    duckdb_close(&_database);
}

void Database::configure(const EHVAppSetting& settings)
{
    auto connection = connect();
    if (const std::string* folder = settings.property("ae.temp.path"); folder && !folder->empty()) {
        _spills = newSpillFolder(nativePath(*folder));
        connection->query("SET GLOBAL temp_directory = " + quotedLiteral(_spills.path()));
    }
    const std::string* threads = settings.property("mmr.threads");
    const long count = threads ? std::strtol(threads->c_str(), nullptr, 10) : 0;
    if (count > 0)
        connection->query("SET GLOBAL threads = " + std::to_string(count));
}

ConnectionLease Database::connect()
{
    {
        const std::lock_guard lock(_mutex);
        if (!_idle.empty()) {
            auto connection = std::move(_idle.back());
            _idle.pop_back();
            return {*this, std::move(connection)};
        }
        _idle.reserve(++_made);
    }
    auto connection = std::make_unique<duck::Connection>(_database);
    for (const char* option : kConnectionOptions)
        connection->query(option);
    return {*this, std::move(connection)};
}

void Database::takeBack(std::unique_ptr<duck::Connection> connection) noexcept
{
    const std::lock_guard lock(_mutex);
    _idle.push_back(std::move(connection));
}

} // namespace EmbeddedHV
