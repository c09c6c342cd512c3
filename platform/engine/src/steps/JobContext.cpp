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

void JobContext::dropTables(const std::set<std::string>& kept) noexcept
{
    std::erase_if(tables, [&](const std::string& table) {
        if (kept.contains(table))
            return false;
        try {
            connection->query("DROP TABLE IF EXISTS " + quotedIdentifier(table));
        } catch (const std::exception&) {
            return true; // it goes with the connection
        }
        return true;
    });
}

} // namespace EmbeddedHV
