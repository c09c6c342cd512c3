#pragma once

#include <vector>

/// Bounds of at most seven steps over all values: multiples of 1, 2, 2.5 or 5 times a power of ten,
/// including the lowest and the highest value. For a single value, both bounds are that value.
std::vector<double> roundBounds(double lowest, double highest);

/// Bounds of `steps` steps of equal width.
std::vector<double> equalBounds(double lowest, double highest, std::size_t steps);

/// Bounds with equally many values between them. `values` are sorted; equal bounds are merged.
std::vector<double> quantileBounds(const std::vector<double>& values, std::size_t parts);
