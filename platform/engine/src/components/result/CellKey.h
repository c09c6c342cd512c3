#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace EmbeddedHV {

/// Addresses of the cells of a result table: for each dimension in order the place of the leaf in
/// base 86, most significant digit first, in the width that the dimension needs.
class CellKeys
{
public:
    /// `leaves` is how many there are in each dimension.
    explicit CellKeys(std::vector<std::size_t> leaves);

    /// The key of the cell at one leaf of each dimension. A place of kAny stands for all leaves.
    std::string at(const std::vector<std::size_t>& places) const;
    /// How many cells there are.
    std::size_t cells() const;
    /// The place of a cell when the last dimension runs fastest.
    std::size_t position(const std::vector<std::size_t>& places) const;

    static constexpr std::size_t kAny = static_cast<std::size_t>(-1);

private:
    std::vector<std::size_t> _leaves;
};

} // namespace EmbeddedHV
