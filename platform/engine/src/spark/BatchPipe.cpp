#include "spark/BatchPipe.h"

#include <algorithm>
#include <cstring>

#include "datafile/DuckFunctions.h"

namespace EmbeddedHV {
namespace {

/// The number of bytes of a value; 0 for a text.
std::size_t widthOf(CFField::StorageType storage)
{
    switch (storage) {
    case CFField::Integer:
    case CFField::Real:
    case CFField::Time:
    case CFField::Timestamp:
        return 8;
    case CFField::Date:
        return 4;
    default:
        return 0;
    }
}

void copyValues(const BatchColumn& from, std::size_t first, std::size_t rows,
                CFField::StorageType storage, duckdb_vector to)
{
    const std::size_t width = widthOf(storage);
    if (width > 0)
        std::memcpy(duckdb_vector_get_data(to), static_cast<const char*>(from.data) + first * width,
                    rows * width);
    for (std::size_t row = 0; row < rows; ++row) {
        if (from.isMissing(first + row)) {
            duck::setMissing(to, row);
        } else if (width == 0) {
            const std::string_view text = from.textAt(first + row);
            duckdb_vector_assign_string_element_len(to, row, text.data(), text.size());
        }
    }
}

} // namespace

bool BatchPipe::put(const RecordBatch& batch)
{
    std::unique_lock lock(_mutex);
    if (batch.rows() == 0)
        return true;
    _batch = &batch;
    _row = 0;
    _changed.notify_all();
    _changed.wait(lock, [this] { return _batch == nullptr || _isReaderClosed; });
    _batch = nullptr;
    return !_isReaderClosed;
}

void BatchPipe::finish()
{
    const std::lock_guard lock(_mutex);
    _state = State::Finished;
    _changed.notify_all();
}

void BatchPipe::fail()
{
    const std::lock_guard lock(_mutex);
    _state = State::Failed;
    _changed.notify_all();
}

void BatchPipe::awaitBegin()
{
    std::unique_lock lock(_mutex);
    _changed.wait(lock, [this] { return _batch || _state != State::Open; });
}

void BatchPipe::closeReader()
{
    const std::lock_guard lock(_mutex);
    _isReaderClosed = true;
    _changed.notify_all();
}

bool BatchPipe::fill(duckdb_data_chunk chunk, const std::vector<std::size_t>& fields) noexcept
{
    std::unique_lock lock(_mutex);
    _changed.wait(lock, [this] { return _batch != nullptr || _state != State::Open; });
    if (_state == State::Failed)
        return false;
    const std::size_t rows =
        _batch == nullptr ? 0 : std::min<std::size_t>(duckdb_vector_size(), _batch->rows() - _row);
    for (std::size_t i = 0; i < fields.size() && rows > 0; ++i)
        copyValues(_batch->column(fields[i]), _row, rows, _fields[fields[i]].GetStorage(),
                   duckdb_data_chunk_get_vector(chunk, i));
    duckdb_data_chunk_set_size(chunk, rows);
    _row += rows;
    if (_batch != nullptr && _row == _batch->rows()) {
        _batch = nullptr;
        _changed.notify_all();
    }
    return true;
}

} // namespace EmbeddedHV
