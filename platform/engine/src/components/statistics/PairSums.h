#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

#include "components/statistics/PairMoments.h"

namespace EmbeddedHV {

/// Collects the sums of all pairs of a left and a right column, some of which may be equal. Memory:
/// a matrix for each sum. Values should be near 0 and their squares near 1, so that no digits are
/// lost. The sums depend only on the records and their order.
class PairSums
{
public:
    /// `left` and `right` are the numbers of columns of a record, from 0 on.
    PairSums(std::vector<std::size_t> left, std::vector<std::size_t> right, bool weighted);
    PairSums(const PairSums&) = delete;
    PairSums& operator=(const PairSums&) = delete;
    ~PairSums();

    /// A chunk of records, borrowed. The values are column after column; not-a-number is a missing
    /// value.
    struct Records
    {
        std::size_t rows = 0;
        std::size_t columns = 0;
        const double* values = nullptr;
        const double* weights = nullptr; ///< one for each record
    };
    /// Adds a chunk. Calls `check` before each part of the work, several times a second; an
    /// exception of it is passed on.
    void take(const Records& records, const std::function<void()>& check);

    /// The sums of a pair, by the positions in the lists.
    PairMoments moments(std::size_t left, std::size_t right) const;

private:
    struct Impl;
    std::unique_ptr<Impl> _impl;
};

} // namespace EmbeddedHV
