#pragma once

#include <cstdint>
#include <string>

#include "DataFileNames.h"
#include "runtime/NumberedObjects.h"

namespace datafile::duck {
class Connection;
}

namespace EmbeddedHV {

class RecordSource;

/// The row iterators and map sources of running jobs, for the database's table function. A row
/// iterator is registered only during Execution::execute. A statement outside it finds nothing.
class RowSources : public NumberedObjects<RecordSource>
{
public:
    /// Registers the table function with the database. Call it once.
    void registerFunction(duck::Connection& connection);
    /// The FROM item that reads a source.
    static std::string tableOf(std::int64_t id);
};

} // namespace EmbeddedHV
