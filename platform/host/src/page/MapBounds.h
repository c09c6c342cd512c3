#pragma once

#include <vector>

/// Bounds of at most seven steps over all values: multiples of 1, 2, 2.5 or 5 times a power of ten,
/// the lowest and the highest among them. For one value alone it is both.
std::vector<double> roundBounds(double lowest, double highest);

/// Bounds of so many steps of equal width.
std::vector<double> equalBounds(double lowest, double highest, std::size_t steps);

/// Bounds between which lie equally many of the values, which are in order. Equal ones are one.
std::vector<double> quantileBounds(const std::vector<double>& values, std::size_t parts);
