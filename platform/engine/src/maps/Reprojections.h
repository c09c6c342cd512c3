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

class Reprojection;

/// The reprojections of running jobs, as the database's function sees them.
class Reprojections
{
public:
    /// Makes the function known to the instance. Once.
    void registerFunction(duck::Connection& connection);

    /// The reprojection is borrowed until removed.
    std::int64_t add(Reprojection& reprojection);
    void remove(std::int64_t id);
    Reprojection* find(std::int64_t id);
    /// SQL that moves the shapes of a column, a quoted name.
    static std::string call(std::int64_t id, const std::string& column);

private:
    std::mutex _mutex;
    std::map<std::int64_t, Reprojection*> _known;
    std::int64_t _nextId = 1;
};

} // namespace EmbeddedHV
