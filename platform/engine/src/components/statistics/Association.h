#pragma once

#include <optional>

namespace EmbeddedHV {

/// How strongly two variables go together, and the test that they do not. What is not defined is
/// empty; an infinite statistic too, with p = 0.
struct Association
{
    std::optional<double> strength;
    std::optional<double> statistic;
    std::optional<double> firstFreedom;
    std::optional<double> secondFreedom; ///< only of F
    std::optional<double> p;
};

} // namespace EmbeddedHV
