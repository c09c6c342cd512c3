#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "CFRange.h"
#include "CFValue.h"

namespace {

constexpr std::int64_t kLargest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kSmallest = std::numeric_limits<std::int64_t>::min();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

} // namespace

TEST(Datum, IsTextOfAsManyDecimalsAsAskedFor)
{
    const std::tuple<CFDatum, int, std::string> cases[] = {
        {CFDatum(), -1, ""},
        {CFDatum(), 2, ""},
        {CFDatum("1.50"), 0, "1.50"},
        {CFDatum(""), -1, ""},
        {CFDatum(kSmallest), -1, "-9223372036854775808"},
        {CFDatum(kLargest), 3, "9223372036854775807"},
        {CFDatum(0.1), -1, "0.1"},
        {CFDatum(1.0), -1, "1"},
        {CFDatum(-0.0), -1, "-0"},
        {CFDatum(1e300), -1, "1e+300"},
        {CFDatum(-1.7976931348623157e308), -1, "-1.7976931348623157e+308"},
        {CFDatum(5e-324), -7, "5e-324"},
        {CFDatum(kInfinity), -1, "inf"},
        {CFDatum(-kInfinity), 2, "-inf"},
        {CFDatum(2.5), 0, "2"},
        {CFDatum(0.125), 2, "0.12"},
        {CFDatum(0.1), 20, "0.10000000000000000555"},
        {CFDatum(-1e22), 1, "-10000000000000000000000.0"},
    };
    for (const auto& [datum, decimals, text] : cases)
        EXPECT_EQ(datum.ToString(decimals), text);

    const std::string all = CFDatum(5e-324).ToString(std::numeric_limits<int>::max());
    EXPECT_EQ(all.size(), 2U + 1074U);
    EXPECT_EQ(all.back(), '5');
    EXPECT_EQ(CFDatum(-1.7976931348623157e308).ToString(1074).size(), 1U + 309U + 1U + 1074U);
}

TEST(Datum, IsOfOneKind)
{
    EXPECT_EQ(CFDatum(7).GetInteger(), 7);
    EXPECT_EQ(CFDatum(7.0).GetReal(), 7.0);
    EXPECT_EQ(CFDatum("7").GetString(), "7");
    EXPECT_THROW(CFDatum(7).GetReal(), std::bad_variant_access);
    EXPECT_THROW(CFDatum().GetString(), std::bad_variant_access);
    EXPECT_FALSE(CFDatum(7) == CFDatum(7.0));
    EXPECT_TRUE(CFDatum(std::nan("")).IsNull());
    EXPECT_TRUE(CFDatum(static_cast<const char*>(nullptr)).IsNull());
    EXPECT_FALSE(CFDatum("").IsNull());
}

TEST(Datum, ComparesByExactValueInOneOrder)
{
    // Neighbours in this order compare below 0; as doubles the large integers would be one.
    const CFDatum ascending[] = {CFDatum(),
                                 CFDatum(-kInfinity),
                                 CFDatum(-0x1.0000000000001p63),
                                 CFDatum(kSmallest),
                                 CFDatum(-1.5),
                                 CFDatum(-1),
                                 CFDatum(-0.5),
                                 CFDatum(0),
                                 CFDatum(5e-324),
                                 CFDatum(1),
                                 CFDatum(1.5),
                                 CFDatum(std::int64_t{9007199254740992}),
                                 CFDatum(std::int64_t{9007199254740993}),
                                 CFDatum(kLargest),
                                 CFDatum(0x1p63),
                                 CFDatum(kInfinity),
                                 CFDatum(""),
                                 CFDatum("10"),
                                 CFDatum("9"),
                                 CFDatum("Z"),
                                 CFDatum("a"),
                                 CFDatum("ä")};
    const auto count = static_cast<int>(std::size(ascending));
    for (int left = 0; left < count; ++left)
        for (int right = 0; right < count; ++right) {
            const int order = ascending[left].Compare(ascending[right]);
            EXPECT_EQ((order > 0) - (order < 0), (left > right) - (left < right))
                << ascending[left].ToString(-1) << " and " << ascending[right].ToString(-1);
        }
    EXPECT_EQ(CFDatum(2).Compare(CFDatum(2.0)), 0);
    EXPECT_EQ(CFDatum(0.0).Compare(CFDatum(-0.0)), 0);
    EXPECT_EQ(CFDatum(-0x1p63).Compare(CFDatum(kSmallest)), 0);
}

TEST(Datum, ShortestTextReadsBackToTheSameNumber)
{
    std::mt19937_64 random(20240229);
    for (int i = 0; i < 20000; ++i) {
        const auto bits = random();
        double number = 0;
        static_assert(sizeof number == sizeof bits);
        std::copy_n(reinterpret_cast<const char*>(&bits), sizeof bits,
                    reinterpret_cast<char*>(&number));
        if (std::isnan(number))
            continue;
        const std::string text = CFDatum(number).ToString(-1);
        double read = 0;
        std::from_chars(text.data(), text.data() + text.size(), read);
        ASSERT_EQ(read, number) << text;
    }
}

TEST(Value, IsFoundByItsDatum)
{
    const std::vector<CFValue> values = {CFValue(CFDatum(3), "three", 0, 0),
                                         CFValue(CFDatum("3"), "text", CFValue::Missing, 7),
                                         CFValue(CFDatum(3.0), "again", 0, 0), CFValue()};
    EXPECT_EQ(CFValue::GetIndex(CFDatum(3.0), values), 0);
    EXPECT_EQ(CFValue::GetIndex(CFDatum("3"), values), 1);
    EXPECT_EQ(CFValue::GetIndex(CFDatum(), values), 3);
    EXPECT_EQ(CFValue::GetIndex(CFDatum("4"), values), -1);
    EXPECT_EQ(CFValue::GetIndex(CFDatum(3), {}), -1);
    EXPECT_EQ(values[1].GetText(), "3");
    EXPECT_EQ(values[1].GetProperty(), CFValue::Missing);
    EXPECT_EQ(values[1].GetOrder(), 7);
}

TEST(Range, IsEmptyWithoutLimits)
{
    EXPECT_TRUE(CFRange().IsEmpty());
    EXPECT_TRUE(CFRange(CFDatum(), CFDatum(std::nan(""))).IsEmpty());
    EXPECT_FALSE(CFRange(CFDatum(), CFDatum(0)).IsEmpty());
    EXPECT_FALSE(CFRange(CFDatum(0), CFDatum()).IsEmpty());
}
