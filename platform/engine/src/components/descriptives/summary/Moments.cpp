#include "components/descriptives/summary/Moments.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace EmbeddedHV {
namespace {

/// All smaller integers are exact as doubles.
constexpr double kExactIntegers = 9007199254740992.0; // 2^53
/// A 64-bit integer that is a multiple of 2^11 is exact as a double.
constexpr int kOffsetBits = 11;
/// The exponents of normal doubles.
constexpr int kLeastExponent = -1022;
constexpr int kGreatestExponent = 1023;

template <class Number>
std::optional<Number> numberIn(const std::string& text)
{
    Number number{};
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc() ? std::optional(number) : std::nullopt;
}

std::optional<double> finite(double value)
{
    return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

void fillShapes(const CentralSums& sums, NumericSummary& summary)
{
    const double w = sums.weight;
    const double variance = sums.second / (w - 1);
    if (!(variance > 0))
        return;
    // Divide step by step: a product of large weights could exceed the range of a double.
    if (w >= 3)
        summary.skewness =
            finite(w / (w - 1) * (w / (w - 2)) * (sums.third / w / variance / std::sqrt(variance)));
    if (w >= 4)
        summary.kurtosis = finite(w / (w - 1) * (w / (w - 2)) * ((w + 1) / (w - 3)) *
                                      (sums.fourth / w / variance / variance) -
                                  3 * ((w - 1) / (w - 2)) * ((w - 1) / (w - 3)));
}

} // namespace

double ValueFrame::scale() const
{
    return std::ldexp(1.0, -exponent);
}

std::optional<ValueFrame> frameOf(const FieldSummary& field)
{
    const auto least = numberIn<double>(field.minimum);
    const auto greatest = numberIn<double>(field.maximum);
    if (!least || !greatest)
        return std::nullopt;
    ValueFrame frame;
    frame.least = *least;
    frame.greatest = *greatest;
    // Halve first: the range of the largest doubles exceeds that of a double.
    double half = *greatest / 2 - *least / 2;
    const auto first = numberIn<std::int64_t>(field.minimum);
    if (field.field.GetStorage() == CFField::Integer && first) {
        // Two different integers may be equal as doubles.
        frame.isConstant = field.minimum == field.maximum;
        half = std::max(half, 0.5);
        if (std::max(-*least, *greatest) > kExactIntegers)
            frame.offset = *first >> kOffsetBits << kOffsetBits;
    } else {
        frame.isConstant = *least == *greatest;
    }
    if (half > 0)
        frame.exponent = std::clamp(std::ilogb(half), kLeastExponent, kGreatestExponent);
    return frame;
}

void fillMoments(const ValueFrame& frame, const CentralSums& sums, NumericSummary& summary)
{
    const double w = sums.weight;
    if (!(w > 0) || !std::isfinite(w))
        return;
    if (frame.isConstant) {
        summary.mean = frame.least;
        if (w > 1)
            summary.variance = summary.standardDeviation = 0;
        return;
    }
    const double mean = std::ldexp(sums.mean, frame.exponent) + static_cast<double>(frame.offset) +
                        std::ldexp(sums.meanRest, frame.exponent);
    summary.mean = std::clamp(mean, frame.least, frame.greatest);
    // Sample statistics divide by W - 1; the later ones by smaller numbers.
    if (!(w > 1))
        return;
    const double variance = sums.second / (w - 1);
    summary.variance = finite(std::ldexp(variance, 2 * frame.exponent));
    summary.standardDeviation = finite(std::ldexp(std::sqrt(variance), frame.exponent));
    fillShapes(sums, summary);
}

} // namespace EmbeddedHV
