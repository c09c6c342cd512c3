#include <array>
#include <cmath>
#include <numbers>

#include "functions/FunctionTable.h"

namespace scoring {
namespace {

using Arguments = std::span<const Cell>;
using Unary = double (*)(double);
using Binary = double (*)(double, double);

template <Unary function>
Cell one(Arguments arguments, Scratch&)
{
    return Cell::of(function(arguments[0].number));
}

template <Binary function>
Cell two(Arguments arguments, Scratch&)
{
    return Cell::of(function(arguments[0].number, arguments[1].number));
}

constexpr Binary plus = [](double a, double b) { return a + b; };
constexpr Binary minus = [](double a, double b) { return a - b; };
constexpr Binary times = [](double a, double b) { return a * b; };
constexpr Binary threshold = [](double a, double b) { return a > b ? 1.0 : 0.0; };

/// Checks for zero first, because sanitizers report the division itself.
Cell divide(Arguments arguments, Scratch&)
{
    const double divisor = arguments[1].number;
    return divisor == 0 ? Cell::invalid() : Cell::of(arguments[0].number / divisor);
}

/// The remainder has the sign of the divisor.
Cell modulo(Arguments arguments, Scratch&)
{
    const double divisor = arguments[1].number;
    if (divisor == 0)
        return Cell::invalid();
    const double rest = std::fmod(arguments[0].number, divisor);
    return Cell::of(rest != 0 && (rest < 0) != (divisor < 0) ? rest + divisor : rest);
}

/// Halves are rounded up. rint would round to even, round away from zero.
constexpr Unary roundHalvesUp = [](double value) {
    const double below = std::floor(value);
    return value - below >= 0.5 ? below + 1 : below;
};

/// Some compilers' sanitizers report std::log(0) as a division by zero.
template <Unary function>
Cell logarithm(Arguments arguments, Scratch&)
{
    const double value = arguments[0].number;
    return value > 0 ? Cell::of(function(value)) : Cell::invalid();
}

constexpr Unary normalDensity = [](double z) {
    return std::exp(-z * z / 2) / std::sqrt(2 * std::numbers::pi);
};
constexpr Unary normalDistribution = [](double z) {
    return std::erfc(-z / std::numbers::sqrt2) / 2;
};

/// The normal distribution of a value, with mean and standard deviation.
template <Unary function, bool isDensity>
Cell normal(Arguments arguments, Scratch&)
{
    const double deviation = arguments[2].number;
    if (!(deviation > 0))
        return Cell::invalid();
    const double result = function((arguments[0].number - arguments[1].number) / deviation);
    return Cell::of(isDensity ? result / deviation : result);
}

constexpr FunctionEntry entry(std::string_view name, std::size_t count, FunctionEntry::Apply apply)
{
    return {name,  count,  count, ArgumentRule::Numbers, ResultRule::Number, MissingRule::Passes,
            apply, nullptr};
}

constexpr std::array kArithmetic{
    entry("+", 2, two<plus>),
    entry("-", 2, two<minus>),
    entry("*", 2, two<times>),
    entry("/", 2, divide),
    entry("modulo", 2, modulo),
    entry("pow", 2, two<std::pow>),
    entry("hypot", 2, two<std::hypot>),
    entry("threshold", 2, two<threshold>),
    entry("log10", 1, logarithm<std::log10>),
    entry("ln", 1, logarithm<std::log>),
    entry("ln1p", 1, one<std::log1p>),
    entry("sqrt", 1, one<std::sqrt>),
    entry("abs", 1, one<std::fabs>),
    entry("exp", 1, one<std::exp>),
    entry("expm1", 1, one<std::expm1>),
    entry("floor", 1, one<std::floor>),
    entry("ceil", 1, one<std::ceil>),
    entry("round", 1, one<roundHalvesUp>),
    entry("rint", 1, one<std::nearbyint>),
    entry("sin", 1, one<std::sin>),
    entry("cos", 1, one<std::cos>),
    entry("tan", 1, one<std::tan>),
    entry("asin", 1, one<std::asin>),
    entry("acos", 1, one<std::acos>),
    entry("atan", 1, one<std::atan>),
    entry("sinh", 1, one<std::sinh>),
    entry("cosh", 1, one<std::cosh>),
    entry("tanh", 1, one<std::tanh>),
    entry("erf", 1, one<std::erf>),
    entry("stdNormalCDF", 1, one<normalDistribution>),
    entry("stdNormalPDF", 1, one<normalDensity>),
    entry("normalCDF", 3, normal<normalDistribution, false>),
    entry("normalPDF", 3, normal<normalDensity, true>),
};

} // namespace

std::span<const FunctionEntry> arithmeticFunctions()
{
    return kArithmetic;
}

} // namespace scoring
