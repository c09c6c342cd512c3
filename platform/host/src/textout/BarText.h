#pragma once

#include <cstddef>
#include <string>

/// The range of the values that bars stand for; 0 is in it.
class BarScale
{
public:
    explicit BarScale(std::size_t width) : _width(width) {}
    void include(double value);
    /// A bar from 0 to the value, to eighths of a place to the right of 0, and to whole places to
    /// the left of it.
    std::string bar(double value) const;

private:
    std::size_t _width;
    double _least = 0;
    double _most = 0;
};
