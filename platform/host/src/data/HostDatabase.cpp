#include "data/HostDatabase.h"

#include <exception>
#include <string>

#include "CFAppHost.h"
#include "ErrorText.h"
#include "FileServices.h"
#include "UserCaseFile.h"
#include "datafile/NativePath.h"
#include "text/CodePage.h"

namespace {

namespace duck = datafile::duck;

/// What the datasets under construction may take before they go to the disk. A file that is read
/// needs far less.
constexpr const char* kMemoryLimit = "512MB";

class HostDatabase
{
public:
    HostDatabase()
        : _database(duck::openInMemory(
              {{"temp_directory", datafile::nativePath(hostToUtf8(GetVexaTempPath()))},
               {"threads", std::to_string(CFAppHost::getInstance()->getMaxCompThreads())},
               {"memory_limit", kMemoryLimit},
               // What was read once is rarely read again, and the system keeps it anyway.
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
        // Whoever opens a file tries again and tells why that fails.
        return;
    }
}

std::unique_ptr<duck::Connection> connectToHostDatabase()
{
    try {
        return hostDatabase().connect();
    } catch (const duck::QueryError& error) {
        throw ErrorText(std::string("the host's database does not start: ") + error.what());
    }
}
