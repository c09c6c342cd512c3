#pragma once

#include "EngineExport.h"

namespace EmbeddedHV {

/// An optional interface of a RowDataIterator: how many records it will serve. An engine may use it
/// for the progress of a job, and for nothing else, because the number may be wrong.
class ENGINE_API RowTotal
{
public:
    /// The number of records, or -1 if it is unknown. Any thread.
    virtual long long totalRecords() const = 0;
    virtual ~RowTotal() = default;
};

} // namespace EmbeddedHV
