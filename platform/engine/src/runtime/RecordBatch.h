#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace EmbeddedHV {

/// A column of a batch. Valid as long as the batch.
struct BatchColumn
{
    /// std::int64_t for Integer, double for Real, std::int32_t for Date (days since 1970-01-01),
    /// std::int64_t for Time and Timestamp (microseconds since midnight and since 1970-01-01).
    /// Texts are read with `text` only.
    const void* data;
    const std::uint64_t* validity; ///< a bit for each row; null: no value is missing
    std::string_view (*text)(const void* data, std::size_t row);

    bool isMissing(std::size_t row) const
    {
        return validity && ((validity[row / 64] >> (row % 64)) & 1) == 0;
    }
    std::string_view textAt(std::size_t row) const { return text(data, row); }
};

/// Some of the records that a statement returns, in their order.
class RecordBatch
{
public:
    virtual ~RecordBatch() = default;
    virtual std::size_t rows() const = 0;
    virtual BatchColumn column(std::size_t index) const = 0;
};

} // namespace EmbeddedHV
