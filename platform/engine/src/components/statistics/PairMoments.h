#pragma once

namespace EmbeddedHV {

/// Weighted sums over the records that have a value in both of two columns x and y.
struct PairMoments
{
    double records = 0;
    double weight = 0;
    double sumX = 0;
    double sumY = 0;
    double squareX = 0;
    double squareY = 0;
    double product = 0;

    /// Whether most digits of the spread of x or y are lost, because the mean is far from 0.
    bool isOffCentre() const
    {
        constexpr double kFew = 1e-2;
        if (weight == 0)
            return false; // no record has both values
        return squareX - sumX * sumX / weight < kFew * squareX ||
               squareY - sumY * sumY / weight < kFew * squareY;
    }
};

} // namespace EmbeddedHV
