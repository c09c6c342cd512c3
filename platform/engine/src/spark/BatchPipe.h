#pragma once

#include <condition_variable>
#include <mutex>
#include <vector>

#include "DataFileNames.h"
#include "datafile/FieldNames.h"
#include "runtime/RecordBatch.h"
#include "runtime/RecordSource.h"

namespace EmbeddedHV {

/// Records on their way from one thread, which puts batches in, to a statement of the embedded
/// database on others, which reads them as a table. One batch at a time is under way.
class BatchPipe final : public RecordSource
{
public:
    explicit BatchPipe(Fields fields) : _fields(std::move(fields)) {}

    /// Waits until the records of the batch are read. Returns false if nobody reads any more.
    bool put(const RecordBatch& batch);
    /// No more batches follow.
    void finish();
    /// The statement that reads the records fails.
    void fail();
    /// Waits for the first batch, finish or fail.
    void awaitBegin();
    /// The statement has ended, so that no batch will be read.
    void closeReader();

    const std::vector<CFField>& fields() const override { return _fields; }
    bool fill(duckdb_data_chunk chunk, const std::vector<std::size_t>& fields) noexcept override;

private:
    enum class State
    {
        Open,
        Finished,
        Failed
    };

    Fields _fields;
    std::mutex _mutex;
    std::condition_variable _changed;
    const RecordBatch* _batch = nullptr; ///< not read to its end
    std::size_t _row = 0;                ///< the next one of the batch
    State _state = State::Open;
    bool _isReaderClosed = false;
};

} // namespace EmbeddedHV
