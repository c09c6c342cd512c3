#include "data/HostDatabase.h"

#include <exception>
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
               {"memory_limit", kHostMemoryLimit},
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

private:
    /// For temporary files of the database, which it must outlive. Not used if the temporary folder
    /// is private.
    datafile::PrivateFolder _spills;
    duckdb_database _database;
};

const HostDatabase& hostDatabase()
{
    static const HostDatabase database;
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
    try {
        return hostDatabase().connect();
    } catch (const duck::QueryError& error) {
        throw ErrorText(std::string("the host's database does not start: ") + error.what());
    } catch (const std::system_error& error) {
        throw ErrorText(std::string("the host has no folder for temporary files: ") + error.what());
    }
}
