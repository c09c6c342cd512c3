#include "data/HostDatabase.h"

#include <algorithm>
#include <exception>
#include <mutex>
#include <string>
#include <system_error>

#include "CFAppHost.h"
#include "ErrorText.h"
#include "FileServices.h"
#include "UserCaseFile.h"
#include "base/NativePath.h"
#include "datafile/PrivateFolder.h"
#include "settings/TempDirectory.h"
#include "text/CodePage.h"

namespace {

namespace duck = datafile::duck;

constexpr std::size_t kMegabyte = 1'000'000;
constexpr std::size_t kLeastMegabytes = 512;
constexpr std::size_t kMostMegabytes = 4096;
/// The database reads 2048 records at a time. A value takes up to 16 bytes, twice: where it is
/// parsed and in the result.
constexpr std::size_t kBytesOfColumn = std::size_t{2048} * 16 * 2;

std::size_t megabytesFor(std::size_t columns)
{
    return std::min(kLeastMegabytes + columns * kBytesOfColumn / kMegabyte, kMostMegabytes);
}

std::string limitText(std::size_t megabytes)
{
    return std::to_string(megabytes) + "MB";
}

std::string temporaryFolder()
{
    return base::nativePath(hostToUtf8(GetVexaTempPath()));
}

/// Creates a private folder for the database's temporary files: their names are the same in each
/// process, and other users may read the shared folder.
datafile::PrivateFolder newSpillFolder()
{
    const std::string folder = temporaryFolder();
    if (isPrivateTempDirectory(folder))
        return {};
    std::error_code ignored; // creating the folder inside reports the reason
    datafile::makeOwnersFolders(folder, ignored);
    return {folder, "vexa-spill-"};
}

class HostDatabase
{
public:
    HostDatabase()
        : _spills(newSpillFolder()),
          _database(duck::openInMemory(
              {{"temp_directory", _spills.path().empty() ? temporaryFolder() : _spills.path()},
               {"threads", std::to_string(CFAppHost::getInstance()->getMaxCompThreads())},
               {"memory_limit", limitText(kLeastMegabytes)},
               // Files are rarely read again, and the system caches them.
               {"enable_external_file_cache", "false"}}))
    {
    }
    HostDatabase(const HostDatabase&) = delete;
    HostDatabase& operator=(const HostDatabase&) = delete;
    ~HostDatabase() { duckdb_close(&_database); }

    std::unique_ptr<duck::Connection> connect() const
    {
        return std::make_unique<duck::Connection>(_database);
    }

    void allow(std::size_t columns, duck::Connection& connection)
    {
        const std::size_t needed = columns > kWideDataset ? megabytesFor(columns) : 0;
        const std::lock_guard lock(_limitGuard);
        if (needed <= _megabytes)
            return;
        connection.query("SET memory_limit = '" + limitText(needed) + "'");
        _megabytes = needed;
    }
    std::string memoryLimit()
    {
        const std::lock_guard lock(_limitGuard);
        return limitText(_megabytes);
    }

private:
    std::mutex _limitGuard;
    std::size_t _megabytes = kLeastMegabytes;
    /// For temporary files of the database, which it must outlive. Not used if the temporary folder
    /// is private.
    datafile::PrivateFolder _spills;
    duckdb_database _database;
};

HostDatabase& hostDatabase()
{
    static HostDatabase database;
    return database;
}

} // namespace

void PreloadCaseFiles()
{
    try {
        hostDatabase();
    } catch (const std::exception&) {
        // Opening a file tries again and reports the reason.
        return;
    }
}

std::unique_ptr<duck::Connection> connectToHostDatabase()
{
    return connectToHostDatabase(0);
}

std::unique_ptr<duck::Connection> connectToHostDatabase(std::size_t columns)
{
    try {
        auto connection = hostDatabase().connect();
        hostDatabase().allow(columns, *connection);
        return connection;
    } catch (const duck::QueryError& error) {
        throw ErrorText(std::string("the host's database does not start: ") + error.what());
    } catch (const std::system_error& error) {
        throw ErrorText(std::string("the host has no folder for temporary files: ") + error.what());
    }
}

std::string hostMemoryLimit()
{
    return hostDatabase().memoryLimit();
}
