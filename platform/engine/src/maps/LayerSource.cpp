#include "maps/LayerSource.h"

#include <numeric>

#include "DataFileNames.h"
#include "ErrorIds.h"
#include "base/Utf8.h"
#include "datafile/DuckFunctions.h"
#include "datafile/ParquetColumns.h"
#include "maps/GeographyLibrary.h"
#include "maps/Reprojection.h"
#include "runtime/ThreadBorder.h"

namespace EmbeddedHV {
namespace {

constexpr const char* kStep = "read";
/// A chunk ends after so many bytes of texts. A shape may have a kilobyte or a megabyte, and every
/// step and buffer behind the source holds whole chunks.
constexpr std::size_t kChunkBytes = std::size_t{64} << 10;

/// Replaces each non-ASCII byte with a question mark if the text is not valid UTF-8. A file may
/// declare the wrong encoding.
void mend(std::string& text)
{
    if (base::isUtf8(text))
        return;
    for (char& letter : text)
        if ((letter & 0x80) != 0)
            letter = '?';
}

void store(duckdb_vector vector, std::size_t row, CFField::StorageType storage,
           maps::LayerValue& value)
{
    void* const data = duckdb_vector_get_data(vector);
    switch (storage) {
    case CFField::Real:
        static_cast<double*>(data)[row] = value.real;
        break;
    case CFField::Date:
        static_cast<std::int32_t*>(data)[row] = static_cast<std::int32_t>(value.integer);
        break;
    case CFField::Integer:
    case CFField::Time:
    case CFField::Timestamp:
        static_cast<std::int64_t*>(data)[row] = value.integer;
        break;
    default:
        mend(value.text);
        duckdb_vector_assign_string_element_len(vector, row, value.text.data(), value.text.size());
    }
}

} // namespace

LayerSource::LayerSource(std::unique_ptr<maps::Layer> layer, const Cancellation& cancellation,
                         RowSources& registry)
    : _layer(std::move(layer)), _cancellation(cancellation), _registry(registry),
      _fields(_layer->fields())
{
    for (CFField& field : _fields) {
        std::string name = field.GetName();
        mend(name);
        field.SetName(name);
    }
    // The replacement may have made names equal.
    makeNamesUnique(_fields);
    _id = _registry.add(*this);
}

LayerSource::~LayerSource()
{
    _registry.remove(_id);
}

void LayerSource::probe()
{
    try {
        std::vector<std::size_t> all(_fields.size());
        std::iota(all.begin(), all.end(), std::size_t{0});
        _layer->rewind(all);
        maps::LayerValue value;
        if (_layer->next())
            for (const std::size_t field : all)
                _layer->read(field, value);
    } catch (const maps::GeographyError& error) {
        throw maps::faultOf(error, kStep);
    }
}

template <class Work>
void LayerSource::guarded(Work work) noexcept
{
    try {
        work();
    } catch (const maps::GeographyError& error) {
        _failure = maps::faultOf(error, kStep);
    } catch (const std::exception& error) {
        _failure.emplace(errors::kInternal, std::string(kStep) + ": " + error.what());
    }
}

void LayerSource::begin(const std::vector<std::size_t>& fields) noexcept
{
    const border::Call call(&_cancellation);
    _ended = false;
    guarded([&] { _layer->rewind(fields); });
}

bool LayerSource::fill(duckdb_data_chunk chunk, const std::vector<std::size_t>& fields,
                       Reprojection* reprojection) noexcept
{
    const border::Call call(&_cancellation);
    if (!_failure)
        guarded([&] { duckdb_data_chunk_set_size(chunk, pull(chunk, fields, reprojection)); });
    return !_failure;
}

void LayerSource::read(std::size_t field, maps::LayerValue& value, Reprojection* reprojection)
{
    value.text.clear();
    // The last field has the shapes.
    if (reprojection && field + 1 == _fields.size())
        value.isMissing =
            !_layer->readShape(_shape) || !reprojection->movePoints(_shape, value.text);
    else
        _layer->read(field, value);
}

std::size_t LayerSource::pull(duckdb_data_chunk chunk, const std::vector<std::size_t>& fields,
                              Reprojection* reprojection)
{
    const std::size_t capacity = duckdb_vector_size();
    maps::LayerValue value;
    std::size_t row = 0;
    std::size_t bytes = 0;
    for (; row < capacity && bytes < kChunkBytes && !_ended; ++row) {
        // Records that were read before a stop are not used.
        if (_cancellation.stopping() || !_layer->next()) {
            _ended = true;
            break;
        }
        for (std::size_t i = 0; i < fields.size(); ++i) {
            const duckdb_vector vector = duckdb_data_chunk_get_vector(chunk, i);
            // A statement that only counts records requests a field that does not exist.
            if (fields[i] >= _fields.size()) {
                duck::setMissing(vector, row);
                continue;
            }
            read(fields[i], value, reprojection);
            bytes += value.text.size();
            if (value.isMissing)
                duck::setMissing(vector, row);
            else
                store(vector, row, _fields[fields[i]].GetStorage(), value);
        }
    }
    return row;
}

MovedLayerSource::MovedLayerSource(std::shared_ptr<LayerSource> layer,
                                   std::shared_ptr<Reprojection> reprojection, RowSources& registry)
    : _layer(std::move(layer)), _reprojection(std::move(reprojection)), _registry(registry),
      _id(registry.add(*this))
{
}

MovedLayerSource::~MovedLayerSource()
{
    _registry.remove(_id);
}

} // namespace EmbeddedHV
