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
    : _iterator(iterator), _cancellation(cancellation), _registry(registry),
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
        duckdb_data_chunk_set_size(chunk, pull(columns, duckdb_vector_size()));
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

std::vector<std::string> RowSource::remarks() const
{
    std::vector<std::string> remarks;
    for (std::size_t i = 0; i < _fields.size(); ++i)
        if (_timesDropped[i] > 0)
            remarks.push_back("read: field \"" + _fields[i].GetName() +
                              "\" of the row iterator \"" + _name +
                              "\": dates with a time of day, which was dropped: " +
                              std::to_string(_timesDropped[i]));
    return remarks;
}

void RowSource::fail(const std::string& what)
{
    _failure.emplace(errors::kIteratorFailed, "read: the row iterator \"" + _name +
                                                  "\" failed at record " +
                                                  std::to_string(_records + 1) + ": " + what);
}

std::size_t RowSource::pull(std::vector<RowColumn>& columns, std::size_t capacity)
{
    std::size_t row = 0;
    const auto room =
        static_cast<std::size_t>(std::min<std::uint64_t>(capacity, _limit - _records));
    while (row < room && !_ended) {
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
        _failure.emplace(errors::kIteratorValue,
                         "read: field \"" + _fields[column.fieldIndex()].GetName() +
                             "\" of the row iterator \"" + _name + "\", record " +
                             std::to_string(_records + 1) + ": " + _problem);
        return false;
    }
    return true;
}

} // namespace EmbeddedHV
