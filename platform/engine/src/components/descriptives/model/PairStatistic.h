#pragma once

#include <cstddef>
#include <cstdint>

#include "components/statistics/Association.h"

namespace EmbeddedHV {

enum class PairMeasure
{
    Correlation, ///< two numbers: r and t
    Eta,         ///< a number and a category: eta and F
    CramersV     ///< two categories: V and chi squared
};

/// The association of two fields, over the records that have a value in both.
struct PairStatistic
{
    std::size_t first = 0; ///< positions among the fields of the summary
    std::size_t second = 0;
    PairMeasure measure = PairMeasure::Correlation;
    std::int64_t records = 0;
    double weight = 0;
    Association association;
};

} // namespace EmbeddedHV
