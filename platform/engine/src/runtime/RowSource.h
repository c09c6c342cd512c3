#pragma once

#include <duckdb.h>

#include <atomic>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "CFField.h"
#include "JobError.h"
#include "RowBlocks.h"
#include "RowDataIterator.h"
#include "RowTotal.h"
#include "runtime/Cancellation.h"
#include "runtime/RecordSource.h"
#include "runtime/RowSources.h"

namespace EmbeddedHV {

class RowColumn;

/// A row iterator as a table. Copies records into the vectors of the database, on one thread at a
/// time. The rows can be read once.
class RowSource : public RecordSource
{
public:
    /// Asks the iterator for its name and data model. Borrows the iterator, the cancellation and
    /// the registry. Throws JobError.
    RowSource(RowDataIterator& iterator, const Cancellation& cancellation, RowSources& registry);
    RowSource(const RowSource&) = delete;
    RowSource& operator=(const RowSource&) = delete;
    ~RowSource() override;

    const std::string& name() const { return _name; }
    const std::vector<CFField>& fields() const override { return _fields; }
    /// The FROM item that reads the rows.
    std::string table() const { return RowSources::tableOf(_id); }
    /// Reads at most this number of records.
    void limitTo(std::uint64_t records) { _limit = records; }
    /// The error that occurred while rows were read. The statement that read them has failed.
    const std::optional<JobError>& failure() const { return _failure; }
    /// The part of the records that was read, from 0 to 1; 0 if their number is unknown. Any
    /// thread.
    double readShare() const;
    /// A sentence for each date field in which values lost a time of day.
    std::vector<FaultParts> remarks() const;

    bool fill(duckdb_data_chunk chunk, const std::vector<std::size_t>& fields) noexcept override;

private:
    std::size_t room(std::size_t capacity) const;
    std::size_t pull(std::vector<RowColumn>& columns, std::size_t capacity);
    bool readRecord(std::vector<RowColumn>& columns, std::size_t row);
    std::size_t pullBlock(std::vector<RowColumn>& columns, const std::vector<std::size_t>& fields,
                          std::size_t capacity);
    bool storeBlock(std::vector<RowColumn>& columns, std::size_t rows);
    void refuseValue(const RowColumn& column, std::uint64_t record);
    void fail(const std::string& what);

    RowDataIterator& _iterator;
    RowBlocks* const _blocks; ///< the same object; null if it serves only rows
    RowTotal* const _total;   ///< the same object; null if it does not know its number of records
    const Cancellation& _cancellation;
    RowSources& _registry;
    std::int64_t _id = 0;
    std::string _name;
    std::vector<CFField> _fields;
    std::uint64_t _limit = UINT64_MAX;
    std::uint64_t _records = 0;
    std::atomic<std::uint64_t> _recordsShown = 0; ///< the same for readShare, after each chunk
    bool _ended = false;
    std::optional<JobError> _failure;
    std::vector<std::uint64_t> _timesDropped; ///< for each field
    std::vector<std::vector<double>> _block;  ///< values of the columns of a block
    std::vector<double*> _blockColumns;
    std::string _problem; ///< of a value; a member, to avoid an allocation for each record
};

} // namespace EmbeddedHV
