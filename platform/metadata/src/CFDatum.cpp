#include "CFDatum.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "NumberText.h"
#include "base/NumberText.h"

namespace {

// The smallest double is 2 to the power of -1074, and has that many decimals.
constexpr int kMostDecimals = 1074;
// Sign, 309 digits and the decimal point before them.
constexpr int kMostBeforeDecimals = 311;

std::string withDecimals(double value, int decimals)
{
    const int count = std::min(decimals, kMostDecimals);
    std::string text(static_cast<std::size_t>(kMostBeforeDecimals + count), '\0');
    const auto result = std::to_chars(text.data(), text.data() + text.size(), value,
                                      std::chars_format::fixed, count);
    text.resize(static_cast<std::size_t>(result.ptr - text.data()));
    return text;
}

template <typename Value>
int sign(const Value& left, const Value& right)
{
    return left < right ? -1 : static_cast<int>(right < left);
}

// Exact: a conversion to double would make neighbouring large integers equal.
int compareMixed(std::int64_t integer, double real)
{
    constexpr double kPastLargest = 0x1p63;
    if (real >= kPastLargest)
        return -1;
    if (real < -kPastLargest)
        return 1;
    const double whole = std::trunc(real);
    const int order = sign(integer, static_cast<std::int64_t>(whole));
    return order != 0 ? order : sign(whole, real);
}

// Sort order: null, numbers, texts.
int rankOf(const CFDatum& datum)
{
    if (datum.IsNull())
        return 0;
    return datum.IsString() ? 2 : 1;
}

int compareNumbers(const CFDatum& left, const CFDatum& right)
{
    if (left.IsInteger())
        return right.IsInteger() ? sign(left.GetInteger(), right.GetInteger())
                                 : compareMixed(left.GetInteger(), right.GetReal());
    return right.IsReal() ? sign(left.GetReal(), right.GetReal())
                          : -compareMixed(right.GetInteger(), left.GetReal());
}

} // namespace

CFDatum::CFDatum(double value)
{
    if (!std::isnan(value))
        _value = value;
}

CFDatum::CFDatum(const char* value)
{
    if (value)
        _value = std::string(value);
}

std::string CFDatum::ToString(int decimals) const
{
    if (IsInteger())
        return std::to_string(GetInteger());
    if (IsReal())
        return decimals < 0 ? base::shortestNumber(GetReal()) : withDecimals(GetReal(), decimals);
    return IsString() ? GetString() : std::string();
}

int CFDatum::Compare(const CFDatum& other) const
{
    const int rank = rankOf(*this);
    if (rank != rankOf(other))
        return sign(rank, rankOf(other));
    if (rank == 0)
        return 0;
    return rank == 1 ? compareNumbers(*this, other) : sign(GetString(), other.GetString());
}
