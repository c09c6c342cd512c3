#pragma once

#include <duckdb.h>

#include <cstddef>
#include <vector>

#include "CFField.h"

namespace EmbeddedHV {

/// Records from outside the database. The database reads them through a table function, on one
/// thread at a time. No operation throws. A source that fails keeps the error until it is asked for
/// it.
class RecordSource
{
public:
    virtual ~RecordSource() = default;
    virtual const std::vector<CFField>& fields() const = 0;
    /// Called before the first chunk of a scan that needs these fields.
    virtual void begin(const std::vector<std::size_t>&) noexcept {}
    /// Fills the chunk with records of the given fields, in this order. An empty chunk means the
    /// end. Returns false after a failure.
    virtual bool fill(duckdb_data_chunk chunk, const std::vector<std::size_t>& fields) noexcept = 0;
};

} // namespace EmbeddedHV
