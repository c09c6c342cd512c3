#pragma once

#include <cstddef>
#include <string>

/// The range of the values of bars, including 0.
class BarScale
{
public:
    explicit BarScale(std::size_t width) : _width(width) {}
    void include(double value);
    /// A bar from 0 to the value, in eighths of a column to the right of 0 and in whole columns to
    /// the left.
    std::string bar(double value) const;

private:
    std::size_t _width;
    double _least = 0;
    double _most = 0;
};
