#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <string>

#include "DataFileNames.h"

namespace datafile::duck {
class Connection;
}

namespace EmbeddedHV {

class RecordSource;

/// The row iterators and map sources that running jobs read, as the database's table function sees
/// them. A row iterator is registered for the length of an Execution::execute: a statement outside
/// of it finds nothing.
class RowSources
{
public:
    /// Makes the table function known to the instance. Once.
    void registerFunction(duck::Connection& connection);

    /// The source is borrowed until removed.
    std::int64_t add(RecordSource& source);
    void remove(std::int64_t id);
    RecordSource* find(std::int64_t id);
    /// The FROM item that reads a source.
    static std::string tableOf(std::int64_t id);

private:
    std::mutex _mutex;
    std::map<std::int64_t, RecordSource*> _sources;
    std::int64_t _nextId = 1;
};

} // namespace EmbeddedHV
