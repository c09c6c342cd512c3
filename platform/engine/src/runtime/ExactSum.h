#pragma once

#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

namespace EmbeddedHV {

/// The exact sum of finite doubles, and how many they are. The order in which values and partial
/// sums are added makes no difference, not in the last bit. A sum of any number of the largest
/// doubles does not overflow. One thread at a time.
///
/// The sum is held as numbers whose exact total it is. Two doubles are enough for most data; if
/// the magnitudes differ too much, a list of non-overlapping extended reals takes over, which has
/// 40 entries at most.
///
/// J. R. Shewchuk, "Adaptive precision floating-point arithmetic and fast robust geometric
/// predicates", Discrete & Computational Geometry 18, 1997: the sum of two numbers and its rounding
/// error (theorem 7), and the addition of a number to a list (theorem 10).
class ExactSum
{
public:
    using Parts = std::vector<long double>;

    ExactSum() = default;
    /// The sum of two doubles and a list as parts() gives it, which represent `count` values.
    ExactSum(double high, double low, std::int64_t count, Parts parts = {});

    void add(double value)
    {
        addPart(value);
        ++_count;
    }
    void add(const ExactSum& other);

    std::int64_t count() const { return _count; }
    double high() const { return _high; }
    double low() const { return _low; }
    /// Null if high() and low() are the sum. Otherwise they are 0.
    const Parts* parts() const { return _parts.get(); }
    /// The number nearest to the sum.
    long double rounded() const;

private:
    void addPart(double value)
    {
        // Below this the differences cannot overflow.
        constexpr double kLargest = 0x1p1022;
        const double high = _high + value;
        const double added = high - _high;
        const double error = (_high - (high - added)) + (value - added);
        const double low = _low + error;
        const double part = low - _low;
        const double lost = (_low - (low - part)) + (error - part);
        if (_parts || !(std::abs(high) < kLargest) || lost != 0) {
            addToParts(value);
            return;
        }
        _high = high;
        _low = low;
    }
    void addToParts(long double value);
    void insert(long double value);

    double _high = 0;
    double _low = 0;
    std::int64_t _count = 0;
    std::unique_ptr<Parts> _parts; ///< ascending magnitudes, none of them 0
};

} // namespace EmbeddedHV
