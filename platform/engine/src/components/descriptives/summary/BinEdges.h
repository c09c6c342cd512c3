#pragma once

#include <optional>
#include <vector>

namespace EmbeddedHV {

/// The kind of values, which determines the possible widths of bins.
enum class BinScale
{
    Real,
    Whole,   ///< whole numbers; a bin is at least 1 wide
    Days,    ///< whole days, in seconds
    Seconds, ///< seconds; widths are divisions of the clock
};

/// The input for the bins of a histogram.
struct BinRequest
{
    /// The least and the greatest value. Both, and their difference, are finite.
    double minimum = 0;
    double maximum = 0;
    std::optional<double> interquartileRange;
    double weight = 0; ///< the sum of the weights of the values
    BinScale scale = BinScale::Real;
};

/// The largest number of bins.
inline constexpr std::size_t kMostBins = 50;

/// The edges of bins of equal width that contain all values: one edge more than bins. A value on an
/// edge belongs to the bin that begins there.
///
/// The width follows D. Freedman and P. Diaconis, "On the histogram as a density estimator: L2
/// theory", Zeitschrift fuer Wahrscheinlichkeitstheorie und verwandte Gebiete 57 (1981), 453-476: 2
/// IQR / W^(1/3). The minimum number of bins follows H. A. Sturges, "The choice of a class
/// interval", Journal of the American Statistical Association 21 (1926), 65-66: log2(W) + 1. If the
/// interquartile range is 0, this rule alone decides. The width is then rounded up to 1, 2 or 5
/// times a power of ten, or to a division of the clock. The edges are multiples of the width. Bins
/// of more than a day follow the calendar instead: see calendarEdges.
std::vector<double> binEdges(const BinRequest& request);

} // namespace EmbeddedHV
