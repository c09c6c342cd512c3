#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "runtime/DataModel.h"

namespace EmbeddedHV {

/// A named data source: a table of the database and its data model.
struct NamedTable
{
    std::string table;
    Fields fields;
};

/// The named data sources of the service. All its executions share them. Names are compared byte by
/// byte. Any thread.
class DataSources
{
public:
    std::optional<NamedTable> find(const std::string& name) const;
    std::vector<std::string> names() const;
    /// A new, unused table name.
    std::string newTable();
    /// Binds the name to a table. Returns the table that it was bound to before.
    std::optional<NamedTable> publish(const std::string& name, NamedTable table);

private:
    mutable std::mutex _mutex;
    std::map<std::string, NamedTable> _tables;
    int _made = 0;
};

} // namespace EmbeddedHV
