#pragma once

#include <optional>
#include <vector>

namespace EmbeddedHV {

/// Values between which a bin may end.
enum class BinScale
{
    Real,
    Whole,   ///< whole numbers: a bin is at least 1 wide
    Days,    ///< seconds, but whole days
    Seconds, ///< widths by which clocks are divided
};

/// What the bins of a histogram depend on.
struct BinRequest
{
    double minimum = 0; ///< finite, as is the range
    double maximum = 0;
    std::optional<double> interquartileRange;
    double weight = 0; ///< the sum of the weights of the values
    BinScale scale = BinScale::Real;
};

/// At most so many bins.
inline constexpr std::size_t kMostBins = 50;

/// The edges of equally wide bins that hold all values, one more than bins. A value on an edge
/// belongs to the bin that begins there.
///
/// The width follows D. Freedman and P. Diaconis, "On the histogram as a density estimator: L2
/// theory", Zeitschrift fuer Wahrscheinlichkeitstheorie und verwandte Gebiete 57 (1981), 453-476:
/// 2 IQR / W^(1/3). There are at least as many bins as H. A. Sturges asks for, "The choice of a
/// class interval", Journal of the American Statistical Association 21 (1926), 65-66:
/// log2(W) + 1, which decides alone where the middle half of the values is one value. Then the
/// width is rounded up to 1, 2 or 5 times a power of ten, or to a division of the clock, and the
/// edges are multiples of it.
std::vector<double> binEdges(const BinRequest& request);

} // namespace EmbeddedHV
