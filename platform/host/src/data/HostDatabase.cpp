#include "data/HostDatabase.h"

#include <string>

#include "CFAppHost.h"
#include "ErrorText.h"
#include "FileServices.h"
#include "datafile/NativePath.h"
#include "datafile/SqlQuoting.h"
#include "text/CodePage.h"

namespace {

namespace duck = datafile::duck;

/// What the datasets under construction may take before they go to the disk. A file that is read
/// needs far less.
constexpr const char* kMemoryLimit = "512MB";

class HostDatabase
{
public:
    HostDatabase() : _database(duck::openInMemory())
    {
        duck::Connection connection(_database);
        const std::string folder = datafile::nativePath(hostToUtf8(GetVexaTempPath()));
        connection.query("SET GLOBAL temp_directory = " + datafile::quotedLiteral(folder));
        connection.query("SET GLOBAL threads = " +
                         std::to_string(CFAppHost::getInstance()->getMaxCompThreads()));
        connection.query(std::string("SET GLOBAL memory_limit = '") + kMemoryLimit + "'");
        // What was read once is rarely read again, and the system keeps it anyway.
        connection.query("SET GLOBAL enable_external_file_cache = false");
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

} // namespace

std::unique_ptr<duck::Connection> connectToHostDatabase()
{
    try {
        static const HostDatabase database;
        return database.connect();
    } catch (const duck::QueryError& error) {
        throw ErrorText(std::string("the host's database does not start: ") + error.what());
    }
}
