#pragma once

#include <duckdb.h>

#include <cstddef>
#include <vector>

#include "CFField.h"

namespace EmbeddedHV {

/// Records that come from outside of the database: it reads them through a table function, on one
/// thread at a time. Nothing here throws; a source that fails keeps the reason to itself until it
/// is asked.
class RecordSource
{
public:
    virtual ~RecordSource() = default;
    virtual const std::vector<CFField>& fields() const = 0;
    /// Before the first chunk of a scan that wants these fields.
    virtual void begin(const std::vector<std::size_t>&) noexcept {}
    /// Fills the chunk with records of the given fields, in this order; none at the end. False
    /// after a failure.
    virtual bool fill(duckdb_data_chunk chunk, const std::vector<std::size_t>& fields) noexcept = 0;
};

} // namespace EmbeddedHV
