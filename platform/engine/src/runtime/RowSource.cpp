#include "runtime/RowSource.h"

#include <algorithm>

#include "EngineException.h"
#include "ErrorIds.h"
#include "runtime/DataModel.h"
#include "runtime/RowColumn.h"
#include "runtime/ThreadBorder.h"

namespace EmbeddedHV {

RowSource::RowSource(RowDataIterator& iterator, const Cancellation& cancellation,
                     RowSources& registry)
    : _iterator(iterator), _blocks(dynamic_cast<RowBlocks*>(&iterator)),
      _total(dynamic_cast<RowTotal*>(&iterator)), _cancellation(cancellation), _registry(registry),
      _name(iterator.getName())
{
    const std::string origin = "the data model of the row iterator \"" + _name + "\"";
    _fields = fieldsOfDataModel(_iterator.getDataModel(), origin, errors::kIteratorModel);
    _timesDropped.resize(_fields.size());
    _id = _registry.add(*this);
}

RowSource::~RowSource()
{
    _registry.remove(_id);
}

bool RowSource::fill(duckdb_data_chunk chunk, const std::vector<std::size_t>& fields) noexcept
{
    const border::Call call(&_cancellation);
    if (_failure)
        return false;
    try {
        std::vector<RowColumn> columns;
        columns.reserve(fields.size());
        for (std::size_t i = 0; i < fields.size(); ++i)
            columns.emplace_back(_fields[fields[i]], fields[i],
                                 duckdb_data_chunk_get_vector(chunk, i));
        const std::size_t capacity = duckdb_vector_size();
        const bool inBlocks = _blocks && !_ended && _blocks->servesBlocks(fields);
        duckdb_data_chunk_set_size(chunk, inBlocks ? pullBlock(columns, fields, capacity)
                                                   : pull(columns, capacity));
        _recordsShown = _records;
        for (const RowColumn& column : columns)
            _timesDropped[column.fieldIndex()] += column.timesDropped();
    } catch (const Exception& exception) {
        fail(exception.getMessage());
    } catch (const JavaException& exception) {
        fail(exception.getMessage());
    } catch (const std::exception& exception) {
        fail(exception.what());
    } catch (...) {
        fail("unknown exception");
    }
    return !_failure;
}

double RowSource::readShare() const
{
    const long long total = _total ? _total->totalRecords() : 0;
    if (total <= 0)
        return 0;
    const std::uint64_t expected = std::min(static_cast<std::uint64_t>(total), _limit);
    return std::min(1.0, static_cast<double>(_recordsShown) /
                             static_cast<double>(std::max<std::uint64_t>(expected, 1)));
}

std::vector<FaultParts> RowSource::remarks() const
{
    std::vector<FaultParts> remarks;
    for (std::size_t i = 0; i < _fields.size(); ++i)
        if (_timesDropped[i] > 0)
            remarks.push_back({.step = "read",
                               .iterator = _name,
                               .field = _fields[i].GetName(),
                               .what = "field \"" + _fields[i].GetName() +
                                       "\" of the row iterator \"" + _name +
                                       "\": dates with a time of day, which was dropped: " +
                                       std::to_string(_timesDropped[i])});
    return remarks;
}

void RowSource::fail(const std::string& what)
{
    _failure.emplace(
        errors::kIteratorFailed,
        FaultParts{.step = "read", .iterator = _name, .record = _records + 1, .what = what});
}

std::size_t RowSource::room(std::size_t capacity) const
{
    return static_cast<std::size_t>(std::min<std::uint64_t>(capacity, _limit - _records));
}

std::size_t RowSource::pull(std::vector<RowColumn>& columns, std::size_t capacity)
{
    std::size_t row = 0;
    const std::size_t most = room(capacity);
    while (row < most && !_ended) {
        // Any code except 0 ends the input. The rows that a cancelled iterator returned so far are
        // passed on.
        if (_cancellation.stopping() ||
            _iterator.nextRecord() != RowDataIterator::RecordAvailable ||
            !readRecord(columns, row)) {
            _ended = true;
            break;
        }
        ++row;
        ++_records;
    }
    // After an error the whole chunk is dropped. The statement fails anyway.
    return _failure ? 0 : row;
}

bool RowSource::readRecord(std::vector<RowColumn>& columns, std::size_t row)
{
    for (RowColumn& column : columns) {
        void* value = nullptr;
        unsigned long long length = 0;
        if (_iterator.getRecordValue(column.fieldIndex(), value, length) !=
            RowDataIterator::RecordAvailable)
            return false;
        if (!value) {
            column.setMissing(row);
            continue;
        }
        if (column.set(row, value, length, _problem))
            continue;
        refuseValue(column, _records + 1);
        return false;
    }
    return true;
}

/// The same as pull, for an iterator that serves several records in one call.
std::size_t RowSource::pullBlock(std::vector<RowColumn>& columns,
                                 const std::vector<std::size_t>& fields, std::size_t capacity)
{
    const std::size_t most = room(capacity);
    if (most == 0 || _cancellation.stopping()) {
        _ended = _ended || most > 0;
        return 0;
    }
    _block.resize(columns.size());
    _blockColumns.resize(columns.size());
    for (std::size_t i = 0; i < columns.size(); ++i) {
        // Reals go straight into the database's vector.
        _block[i].resize(columns[i].reals() ? 0 : capacity);
        _blockColumns[i] = columns[i].reals() ? columns[i].reals() : _block[i].data();
    }
    std::size_t count = 0;
    try {
        _ended = _blocks->nextRecords(fields, _blockColumns, most, count) !=
                 RowDataIterator::RecordAvailable;
    } catch (...) {
        _records += count; // for the message
        throw;
    }
    if (!storeBlock(columns, count))
        return 0;
    _records += count;
    return count;
}

/// Returns false if a value cannot be stored. Reports that of the first record, as readRecord does.
bool RowSource::storeBlock(std::vector<RowColumn>& columns, std::size_t rows)
{
    for (std::size_t i = 0; i < columns.size(); ++i)
        for (std::size_t row = 0; columns[i].reals() && row < rows; ++row)
            if (_blockColumns[i][row] == RowBlocks::kMissing)
                columns[i].setMissing(row);
    const bool allReals = std::all_of(columns.begin(), columns.end(),
                                      [](const RowColumn& column) { return column.reals(); });
    for (std::size_t row = 0; !allReals && row < rows; ++row)
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const double value = _blockColumns[i][row];
            if (columns[i].reals())
                continue;
            if (value == RowBlocks::kMissing) {
                columns[i].setMissing(row);
            } else if (!columns[i].set(row, &value, sizeof value, _problem)) {
                refuseValue(columns[i], _records + row + 1);
                return false;
            }
        }
    return true;
}

void RowSource::refuseValue(const RowColumn& column, std::uint64_t record)
{
    const CFField& field = _fields[column.fieldIndex()];
    // The only reason to reject a text is its encoding.
    const bool isText = field.GetStorage() == CFField::String;
    _failure.emplace(errors::kIteratorValue, FaultParts{.step = "read",
                                                        .iterator = _name,
                                                        .record = record,
                                                        .field = field.GetName(),
                                                        .kind = isText ? kinds::kNotUtf8 : "",
                                                        .what = _problem});
}

} // namespace EmbeddedHV
