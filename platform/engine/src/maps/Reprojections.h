#pragma once

#include <cstdint>
#include <string>

#include "DataFileNames.h"
#include "runtime/NumberedObjects.h"

namespace datafile::duck {
class Connection;
}

namespace EmbeddedHV {

class Reprojection;

/// The reprojections of running jobs, as the database's function sees them.
class Reprojections : public NumberedObjects<Reprojection>
{
public:
    /// Makes the function known to the instance. Once.
    void registerFunction(duck::Connection& connection);
    /// SQL that moves the shapes of a column, a quoted name.
    static std::string call(std::int64_t id, const std::string& column);
};

} // namespace EmbeddedHV
