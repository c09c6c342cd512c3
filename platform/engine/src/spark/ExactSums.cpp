#include "spark/ExactSums.h"

#include <array>
#include <cstdint>

#include "spark/SparkDialect.h"
#include "spark/SparkSql.h"

namespace EmbeddedHV {
namespace {

/// The bits of a digit of an Integer. A place holds the digits of 2^41 records.
constexpr int kIntegerBits = 21;

/// Reals have three digits of 28 bits, from -2^27 to 2^27, so that a place holds the digits of 2^36
/// records. What is above and below these places is added as doubles. What is above is exact too,
/// until it exceeds 2^53 units of the place above.
constexpr int kBits = 28;
constexpr int kLeastPlace = -52; ///< the exponent of its unit
constexpr std::size_t kPlaces = 3;
constexpr int kPlaceAbove = kLeastPlace + kBits * static_cast<int>(kPlaces);
/// The exponent from which values are only added to the place above. Their lower digits are 0, and
/// in units of the least place they could exceed the range of a double.
constexpr int kGreat = 600;

std::string integer(std::int64_t value)
{
    return sparkDialect().literal(value);
}

/// The value in units of a place.
std::string inUnits(const std::string& value, int place)
{
    return "rint(" + value + " * " + sparkPowerOfTwo(-place) + ")";
}

/// The aggregates of one sum, by their names.
struct Accumulators
{
    std::array<std::string, kPlaces> places; ///< from the least one
    std::string above;
    std::string below; ///< missing without values
};

Accumulators accumulators(AggregateLevels& levels, const std::string& column,
                          const std::string& finite)
{
    const std::string number = levels.value(
        "CASE WHEN abs(" + column + ") < " HV_SPARK_INFINITY " THEN " + column + " ELSE 0D END");
    const std::string small =
        levels.value("CASE WHEN abs(" + column + ") < " + sparkPowerOfTwo(kGreat) + " THEN " +
                     column + " ELSE 0D END");
    Accumulators sums;
    int place = kLeastPlace;
    for (std::string& sum : sums.places) {
        sum = levels.aggregate("sum(CAST(" + inUnits(small, place) + " - " +
                               inUnits(small, place + kBits) + " * " + sparkPowerOfTwo(kBits) +
                               " AS BIGINT))");
        place += kBits;
    }
    sums.above = levels.aggregate("sum(" + inUnits(number, kPlaceAbove) + ")");
    sums.below = levels.aggregate("sum(CASE WHEN " + finite + " IS NOT NULL THEN " + small + " - " +
                                  inUnits(small, kLeastPlace) + " * " +
                                  sparkPowerOfTwo(kLeastPlace) + " END)");
    return sums;
}

/// A sum of digits, in units of the next place.
std::string carryOf(const std::string& sum)
{
    return "shiftright(" + sum + " + " + integer(std::int64_t{1} << (kBits - 1)) + ", " +
           std::to_string(kBits) + ")";
}

/// A sum with the carry of the place below; "" is no carry.
std::string added(const std::string& digits, const std::string& carry)
{
    return carry.empty() ? digits : "(" + digits + " + " + carry + ")";
}

/// What a place contributes after its carry.
std::string digitTerm(const std::string& sum, const std::string& carry, int place)
{
    return "(" + sum + " - shiftleft(" + carry + ", " + std::to_string(kBits) + ")) * " +
           sparkPowerOfTwo(place);
}

/// Adds from the least to the greatest. A carry rounds, so that all places below the greatest one
/// are small beside it, and no sum of them cancels it.
std::string total(const Accumulators& sums)
{
    std::string total = sums.below + " + ";
    std::string carry;
    int place = kLeastPlace;
    for (const std::string& digits : sums.places) {
        const std::string sum = added(digits, carry);
        carry = carryOf(sum);
        total.append(digitTerm(sum, carry, place)).append(" + ");
        place += kBits;
    }
    return total + added(sums.above, carry) + " * " + sparkPowerOfTwo(kPlaceAbove);
}

} // namespace

std::string exactIntegerSum(AggregateLevels& levels, const std::string& value)
{
    const std::string mask = integer((std::int64_t{1} << kIntegerBits) - 1);
    const auto shifted = [&](int places) {
        return "shiftright(" + value + ", " + std::to_string(places * kIntegerBits) + ")";
    };
    const auto unit = [](int places) {
        return std::to_string(std::int64_t{1} << (places * kIntegerBits));
    };
    const auto sum = [&](const std::string& digit) {
        return "CAST(" + levels.aggregate("sum(" + digit + ")") + " AS DECIMAL(20, 0))";
    };
    const std::string high = sum(shifted(2));
    const std::string middle = sum(shifted(1) + " & " + mask);
    const std::string low = sum(value + " & " + mask);
    return levels.result(high + " * " + unit(2) + " + " + middle + " * " + unit(1) + " + " + low);
}

std::string exactRealSum(AggregateLevels& levels, const std::string& column,
                         const std::string& finite)
{
    return levels.result(total(accumulators(levels, column, finite)));
}

} // namespace EmbeddedHV
