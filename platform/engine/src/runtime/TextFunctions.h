#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "DataFileNames.h"
#include "runtime/NumberedObjects.h"

namespace datafile::duck {
class Connection;
}

namespace EmbeddedHV {

/// A function from text to text that statements of one job call. It must allow calls on any number
/// of threads.
class TextFunction
{
public:
    virtual ~TextFunction() = default;
    /// Writes the result to `out`. Returns false if the result is missing. If it throws
    /// std::exception, the statement fails with that text.
    virtual bool call(std::string_view text, std::string& out) = 0;
};

/// The text functions of running jobs.
class TextFunctions : public NumberedObjects<TextFunction>
{
public:
    /// Registers the database's function that finds them. Call it once.
    void registerFunction(duck::Connection& connection);
    /// SQL that calls a function for each value of a column. `column` is a quoted name.
    static std::string call(std::int64_t id, const std::string& column);
};

} // namespace EmbeddedHV
