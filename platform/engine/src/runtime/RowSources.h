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

/// The row iterators and map sources that running jobs read, as the database's table function sees
/// them. A row iterator is registered for the length of an Execution::execute: a statement outside
/// of it finds nothing.
class RowSources : public NumberedObjects<RecordSource>
{
public:
    /// Makes the table function known to the instance. Once.
    void registerFunction(duck::Connection& connection);
    /// The FROM item that reads a source.
    static std::string tableOf(std::int64_t id);
};

} // namespace EmbeddedHV
