#pragma once

#include <cstdint>
#include <vector>

#include "runtime/RecordBatch.h"
#include "spark/SparkClient.h"
#include "spark/SparkColumns.h"

namespace EmbeddedHV {

/// A batch of the cluster. Reads the values in place, except times, which have another unit. The
/// object is used again for the next batch, so that it allocates nothing.
class SparkBatch final : public RecordBatch
{
public:
    explicit SparkBatch(const std::vector<SparkColumn>& columns);

    /// The next batch. Borrows its memory.
    void show(ArrowBlock block);

    std::size_t rows() const override { return _block.records; }
    BatchColumn column(std::size_t index) const override;

private:
    /// Where the texts of a column are.
    struct Texts
    {
        const std::uint8_t* offsets = nullptr;
        const char* bytes = nullptr;
    };
    static std::string_view textAt(const void* data, std::size_t row);
    const std::uint8_t* part(std::size_t column, std::size_t part) const;
    void convertTimes(std::size_t column);

    ArrowBlock _block;
    std::vector<bool> _isTime;
    std::vector<bool> _isText;
    std::vector<Texts> _texts;
    std::vector<std::vector<std::int64_t>> _times; ///< in microseconds
    std::vector<std::vector<std::uint64_t>> _validity;
};

} // namespace EmbeddedHV
