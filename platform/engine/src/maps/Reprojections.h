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

/// The reprojections of running jobs, for the database's function.
class Reprojections : public NumberedObjects<Reprojection>
{
public:
    /// Registers the function with the database. Call it once.
    void registerFunction(duck::Connection& connection);
    /// SQL that transforms the shapes of a column. `column` is a quoted name.
    static std::string call(std::int64_t id, const std::string& column);
};

} // namespace EmbeddedHV
