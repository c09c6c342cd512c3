#include "steps/JobContext.h"

#include "datafile/SqlQuoting.h"

namespace EmbeddedHV {

std::string JobContext::inputPath(const std::string& text) const
{
    std::string path = files.resolve(text, containers);
    if (unwritten.contains(canonicalPath(path)))
        throw NotYetWritten{};
    return path;
}

std::string JobContext::newTable(const char* prefix)
{
    return tables.emplace_back(prefix + std::to_string(++tablesNamed));
}

void JobContext::dropTables() noexcept
{
    for (const std::string& table : tables) {
        try {
            connection->query("DROP TABLE IF EXISTS " + quotedIdentifier(table));
        } catch (const std::exception&) {
            continue; // it goes with the connection
        }
    }
    tables.clear();
}

} // namespace EmbeddedHV
