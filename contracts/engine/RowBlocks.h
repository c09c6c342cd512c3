#pragma once

#include <cstddef>
#include <limits>
#include <vector>

#include "EngineExport.h"

namespace EmbeddedHV {

/// An optional interface of a RowDataIterator: several records in one call, column by column. It
/// saves two virtual calls for each value. An engine may look for it with dynamic_cast; it may as
/// well ignore it and read row by row. Only an iterator that has its records in memory should
/// implement it, because the engine checks for a cancel only between two calls.
class ENGINE_API RowBlocks
{
public:
    /// In a block, a missing value is this number.
    static constexpr double kMissing = std::numeric_limits<double>::lowest();

    /// Whether these fields can be served in blocks from the current record on. All must be
    /// numbers, dates, times or timestamps. The answer may change only before the first record.
    virtual bool servesBlocks(const std::vector<std::size_t>& fields) = 0;
    /// Moves over the next records, at most `most`, and writes their values: those of `fields[i]`
    /// to `columns[i]`, which has room for `most` values, in the units of getRecordValue. `count`
    /// is the number of records that were moved over, also if the call throws.
    ///
    /// Returns a status of RowDataIterator, as nextRecord would after these records. If it is not
    /// RecordAvailable, no further record follows. The values of the last record can then not be
    /// read with getRecordValue. It throws what nextRecord throws.
    virtual unsigned int nextRecords(const std::vector<std::size_t>& fields,
                                     const std::vector<double*>& columns, std::size_t most,
                                     std::size_t& count) = 0;
    virtual ~RowBlocks() = default;
};

} // namespace EmbeddedHV
