#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "components/descriptives/summary/CentralSums.h"
#include "components/descriptives/summary/ChunkColumns.h"

namespace EmbeddedHV {

/// The number of values in a piece. A piece fits into the processor's fastest cache, and a table
/// may have thousands of fields.
inline constexpr std::size_t kPiece = 512;
using Piece = std::array<double, kPiece>;

/// Rows of a chunk that belong to one group.
struct Rows
{
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// Collects the values of a field into pieces and sums each full piece. The size of a piece is
/// fixed, so it does not depend on the database's chunks.
class PieceSums
{
public:
    /// Borrows `scratch`. The pieces of all fields may share it.
    explicit PieceSums(Piece& scratch) : _scratch(scratch) {}

    /// Begins with no values, which are multiplied by `scale` before they are summed.
    void begin(double scale)
    {
        _scale = scale;
        _count = 0;
        _sums = {};
    }

    /// Takes the present values. `numberAt` returns the value of a row; `weights` may be null.
    template <class NumberAt>
    void take(const Rows& rows, const std::uint64_t* validity, const double* weights,
              const NumberAt& numberAt)
    {
        for (std::size_t row = rows.begin; row < rows.end; ++row) {
            if (!isThere(validity, row))
                continue;
            _values[_count] = numberAt(row) * _scale;
            if (weights)
                _weights[_count] = weights[row];
            if (++_count == kPiece)
                endPiece(weights != nullptr);
        }
    }

    const CentralSums& finish(bool weighted)
    {
        if (_count > 0)
            endPiece(weighted);
        return _sums;
    }

private:
    void endPiece(bool weighted)
    {
        const double near = _sums.weight > 0 ? _sums.mean : _values[0];
        merge(_sums, centralSums(_values.data(), weighted ? _weights.data() : nullptr, _count, near,
                                 _scratch.data()));
        _count = 0;
    }

    double _scale = 1;
    std::size_t _count = 0;
    CentralSums _sums;
    Piece _values{};
    Piece _weights{};
    Piece& _scratch;
};

} // namespace EmbeddedHV
