#include "spark/SparkBatch.h"

#include <cstring>
#include <utility>

namespace EmbeddedHV {
namespace {

/// Of the layout: numbers for each column, and the places of the offset and length of its parts.
constexpr std::size_t kStride = 7;
constexpr std::size_t kValidity = 1;
constexpr std::size_t kOffsets = 3;
constexpr std::size_t kValues = 5;

template <class Number>
Number numberAt(const std::uint8_t* bytes, std::size_t index)
{
    Number number = 0;
    std::memcpy(&number, bytes + index * sizeof(Number), sizeof(Number));
    return number;
}

} // namespace

SparkBatch::SparkBatch(const std::vector<SparkColumn>& columns)
    : _texts(columns.size()), _times(columns.size()), _validity(columns.size())
{
    for (const SparkColumn& column : columns) {
        _isTime.push_back(column.type.starts_with("TIME("));
        _isText.push_back(column.type == "STRING");
    }
}

const std::uint8_t* SparkBatch::part(std::size_t column, std::size_t part) const
{
    return _block.bytes + _block.layout[kStride * column + part];
}

void SparkBatch::convertTimes(std::size_t column)
{
    const std::uint8_t* const values = part(column, kValues);
    _times[column].resize(_block.records);
    for (std::size_t row = 0; row < _block.records; ++row)
        _times[column][row] = numberAt<std::int64_t>(values, row) / kNanosecondsPerMicrosecond;
}

void SparkBatch::show(ArrowBlock block)
{
    _block = std::move(block);
    for (std::size_t column = 0; column < _texts.size(); ++column) {
        if (_isTime[column])
            convertTimes(column);
        if (_isText[column])
            _texts[column] = {part(column, kOffsets),
                              reinterpret_cast<const char*>(part(column, kValues))};
        // The bits may end within a word, and a word is read as a whole.
        const auto bytes =
            static_cast<std::size_t>(_block.layout[kStride * column + kValidity + 1]);
        const bool anyMissing = _block.layout[kStride * column] > 0 && bytes > 0;
        _validity[column].assign(anyMissing ? (bytes + 7) / 8 : 0, 0);
        if (anyMissing)
            std::memcpy(_validity[column].data(), part(column, kValidity), bytes);
    }
}

BatchColumn SparkBatch::column(std::size_t index) const
{
    const void* data = part(index, kValues);
    if (_isTime[index])
        data = _times[index].data();
    else if (_isText[index])
        data = &_texts[index];
    return {data, _validity[index].empty() ? nullptr : _validity[index].data(), textAt};
}

std::string_view SparkBatch::textAt(const void* data, std::size_t row)
{
    const auto& texts = *static_cast<const Texts*>(data);
    const auto begin = numberAt<std::int32_t>(texts.offsets, row);
    const auto end = numberAt<std::int32_t>(texts.offsets, row + 1);
    return {texts.bytes + begin, static_cast<std::size_t>(end - begin)};
}

} // namespace EmbeddedHV
