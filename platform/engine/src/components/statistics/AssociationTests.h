#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "components/statistics/Association.h"
#include "components/statistics/PairMoments.h"

namespace EmbeddedHV {

/// Pearson's correlation r, tested with t = r sqrt((W - 2) / (1 - r^2)) on W - 2 degrees of
/// freedom, two-sided. Needs W > 2 and two variables that vary.
Association correlation(const PairMoments& moments);

/// Weighted sums of a group's values.
struct GroupSums
{
    double weight = 0;
    double sum = 0;
    double squares = 0;
};
/// Whether most digits of the spread within the groups are lost, because means are far from 0.
bool areOffCentre(const std::vector<GroupSums>& groups);
/// The correlation ratio eta = sqrt(SSB / SST), tested with F = (SSB / (g - 1)) / (SSW / (W - g))
/// of the one-way analysis of variance. Needs two groups, W > g and values that vary. R. A. Fisher,
/// "Statistical Methods for Research Workers", 1925, chapter VIII.
/// `within` is SSW if it is known; otherwise it is computed from the sums.
Association correlationRatio(const std::vector<GroupSums>& groups,
                             std::optional<double> within = std::nullopt);

/// A table of two variables. Most cells of a large table are empty, and they are not stored.
struct Contingency
{
    struct Cell
    {
        std::size_t row = 0;
        std::size_t column = 0;
        double weight = 0;
    };

    std::size_t rows = 0;
    std::size_t columns = 0;
    std::vector<Cell> cells; ///< each with a positive weight, and at most once
};
/// Cramer's V = sqrt(chi^2 / (W (min(rows, columns) - 1))), tested with Pearson's chi squared on
/// (rows - 1) (columns - 1) degrees of freedom, without a correction for continuity. Rows and
/// columns without weight do not count. Needs two of each. H. Cramer, "Mathematical Methods of
/// Statistics", 1946, chapter 21.
Association contingency(const Contingency& table);

} // namespace EmbeddedHV
