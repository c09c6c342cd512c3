#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace EmbeddedHV {

/// Addresses of the cells of a result table. For each dimension in order, an address has the
/// position of the leaf in base 86, most significant digit first, in the width that the dimension
/// needs.
class CellKeys
{
public:
    /// `leaves` has the number of leaves of each dimension.
    explicit CellKeys(std::vector<std::size_t> leaves);

    /// The key of the cell at one leaf of each dimension. A position of kAny means all leaves.
    std::string at(const std::vector<std::size_t>& places) const;
    /// The number of cells.
    std::size_t cells() const;
    /// The index of a cell if the last dimension varies fastest.
    std::size_t position(const std::vector<std::size_t>& places) const;

    static constexpr std::size_t kAny = static_cast<std::size_t>(-1);

private:
    std::vector<std::size_t> _leaves;
};

} // namespace EmbeddedHV
