#include "runtime/DataSources.h"

#include <utility>

namespace EmbeddedHV {

std::optional<NamedTable> DataSources::find(const std::string& name) const
{
    const std::lock_guard lock(_mutex);
    const auto found = _tables.find(name);
    return found == _tables.end() ? std::nullopt : std::optional(found->second);
}

std::vector<std::string> DataSources::names() const
{
    const std::lock_guard lock(_mutex);
    std::vector<std::string> names;
    for (const auto& [name, table] : _tables)
        names.push_back(name);
    return names;
}

std::string DataSources::newTable()
{
    const std::lock_guard lock(_mutex);
    return "hv_source_" + std::to_string(++_made);
}

std::optional<NamedTable> DataSources::publish(const std::string& name, NamedTable table)
{
    const std::lock_guard lock(_mutex);
    const auto [entry, isNew] = _tables.try_emplace(name, table);
    if (isNew)
        return std::nullopt;
    return std::exchange(entry->second, std::move(table));
}

} // namespace EmbeddedHV
