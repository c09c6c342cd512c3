#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "runtime/DataModel.h"

namespace EmbeddedHV {

/// A data source that jobs know by name: a table of the database with its data model.
struct NamedTable
{
    std::string table;
    Fields fields;
};

/// The named data sources of the service, shared by all its executions. Names are compared byte by
/// byte. Any thread.
class DataSources
{
public:
    std::optional<NamedTable> find(const std::string& name) const;
    std::vector<std::string> names() const;
    /// A table name that was not used before.
    std::string newTable();
    /// Binds the name to a table; gives what it was bound to.
    std::optional<NamedTable> publish(const std::string& name, NamedTable table);

private:
    mutable std::mutex _mutex;
    std::map<std::string, NamedTable> _tables;
    int _made = 0;
};

} // namespace EmbeddedHV
