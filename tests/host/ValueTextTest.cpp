#include "HostValueText.h"

#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "CFAppHost.h"
#include "ObsVecMap.h"
#include "VexaCases.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kDay = 86400;
constexpr double kUnixEpoch = 12219379200.0;
constexpr double kLeapDay = kUnixEpoch + 18321 * kDay; // 2020-02-29
constexpr double kNoon = kLeapDay + 12 * 3600 + 30 * 60 + 15.25;

/// Numbers are spelt as in a locale for a scope.
class ScopedLocale
{
public:
    explicit ScopedLocale(const char* locale) { CFAppHost::getInstance()->setLocale(locale); }
    ~ScopedLocale() { CFAppHost::getInstance()->setLocale(""); }
    ScopedLocale(const ScopedLocale&) = delete;
    ScopedLocale& operator=(const ScopedLocale&) = delete;
};

VEXA_Format format(int type, int width, int decimals = 0)
{
    return {static_cast<std::uint16_t>(width), static_cast<std::uint8_t>(type),
            static_cast<std::uint8_t>(decimals)};
}

// The text between brackets, with a mark behind the buffer that must stay.
std::string written(double value, const VEXA_Format& how)
{
    OBS unit{};
    unit.number = value;
    std::string buffer(how.width, '?');
    buffer += '#';
    if (ToString(&unit, how, buffer.data()) != 0)
        return "failed";
    EXPECT_EQ(buffer.back(), '#');
    buffer.pop_back();
    return buffer;
}

// What the text is read as; nothing if it is refused, which leaves the missing value.
std::optional<double> readBack(std::string text, VEXA_Format how)
{
    how.width = static_cast<std::uint16_t>(text.size());
    OBS unit{};
    const bool isRead = FromString(text.c_str(), how, &unit) == 0;
    EXPECT_TRUE(isRead || unit.number == kSystemMissing) << text;
    return isRead ? std::optional(unit.number) : std::nullopt;
}

/// A value, its text in a format, and the value that the text is read as.
using ThereAndBack = std::tuple<double, VEXA_Format, const char*, double>;

} // namespace

TEST(ValueTextTest, NumbersFitTheirWidthAndComeBack)
{
    const ScopedLocale locale("en_US");
    const ThereAndBack rows[] = {
        {1234.567, format(kFormatNumber, 10, 2), "   1234.57", 1234.57},
        {-1234567.891, format(kFormatComma, 14, 2), " -1,234,567.89", -1234567.89},
        {1234567.5, format(kFormatDot, 12, 1), " 1.234.567,5", 1234567.5},
        {-1234.5, format(kFormatDollar, 10, 2), "-$1,234.50", -1234.5},
        {12.5, format(kFormatPercent, 6, 1), " 12.5%", 12.5},
        {0.1 + 0.2, format(kFormatGeneral, 10, 3), "       0.3", 0.3},
        {999.9996, format(kFormatGeneral, 5, 3), " 1000", 1000},
        {1e15, format(kFormatGeneral, 16, 3), "1000000000000000", 1e15},
        // A half goes away from zero, and a zero has no sign.
        {1.005, format(kFormatNumber, 5, 2), " 1.01", 1.01},
        {-2.5, format(kFormatNumber, 3, 0), " -3", -3},
        {-0.004, format(kFormatNumber, 5, 2), " 0.00", 0},
        {0.5, format(kFormatNumber, 1, 0), "1", 1},
        // Too narrow: fewer decimals, then a power of ten, then asterisks.
        {1234.567, format(kFormatNumber, 6, 4), "1234.6", 1234.6},
        {99.96, format(kFormatNumber, 4, 2), " 100", 100},
        {123456789, format(kFormatNumber, 7, 2), "1.2E+08", 1.2e8},
        {-1e300, format(kFormatNumber, 8, 2), " -1E+300", -1e300},
        {9.99e10, format(kFormatNumber, 5, 0), "1E+11", 1e11},
        {5e-324, format(kFormatGeneral, 3, 3), "  0", 0},
    };
    for (const auto& [value, how, text, back] : rows) {
        const std::string made = written(value, how);
        EXPECT_EQ(made, text);
        EXPECT_DOUBLE_EQ(readBack(made, how).value_or(kInfinity), back) << made;
    }
    EXPECT_EQ(written(123, format(kFormatNumber, 2)), "**");
    EXPECT_EQ(written(12345678, format(kFormatNumber, 4)), "****");
    EXPECT_EQ(written(12, format(kFormatGeneral, 1)), "*");
    EXPECT_EQ(written(1, format(kFormatNumber, 0)), "");
}

TEST(ValueTextTest, TheLocaleGivesTheDecimalSignOfFormatsWithoutOne)
{
    const ScopedLocale locale("de_DE");
    EXPECT_EQ(written(0.5, format(kFormatNumber, 4, 2)), "0,50");
    EXPECT_EQ(written(12.5, format(kFormatPercent, 5, 1)), "12,5%");
    EXPECT_EQ(written(12.5, format(kFormatGeneral, 4, 3)), "12,5");
    EXPECT_EQ(written(1234.5, format(kFormatComma, 7, 1)), "1,234.5");
    EXPECT_EQ(readBack("0,50", format(kFormatNumber, 4)), 0.5);
    EXPECT_EQ(readBack("0.50", format(kFormatNumber, 4)), std::nullopt);
}

TEST(ValueTextTest, WhatIsNoNumberHasATextInEveryFormat)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const int type : {3, 4, 5, 31, 32, 40}) {
        EXPECT_EQ(written(kSystemMissing, format(type, 3)), "  .");
        EXPECT_EQ(written(kInfinity, format(type, 4)), " Inf");
        EXPECT_EQ(written(-kInfinity, format(type, 3)), "***");
        EXPECT_EQ(readBack("-Inf", format(type, 4)), -kInfinity);
        EXPECT_TRUE(std::isnan(readBack(written(nan, format(type, 3)), format(type, 3)).value()));
        EXPECT_EQ(readBack("  . ", format(type, 4)), kSystemMissing);
        for (const char* wrong : {"1x", "--1", "1e", "-", "1 2", "+-1", "0x10", "%", "$", "E5"})
            EXPECT_EQ(readBack(wrong, format(type, 4)), std::nullopt) << wrong;
    }
    for (const int type : {20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 38, 39, 85, 86}) {
        EXPECT_EQ(written(kSystemMissing, format(type, 1)), ".");
        for (const double value : {nan, kInfinity, -kInfinity, 1e18, -1e18, kLeapDay})
            EXPECT_EQ(written(value, format(type, 1, 2)), "*") << type << " " << value;
        for (const double value : {nan, kInfinity, 1e18})
            EXPECT_EQ(written(value, format(type, 4)), "****") << type << " " << value;
        EXPECT_EQ(readBack("", format(type, 0)), kSystemMissing);
        for (const char* wrong :
             {"31-31-31", "1:60", "XY 2020", "5 Q 2020", "2021366", "0 WK 2020"})
            EXPECT_EQ(readBack(wrong, format(type, 0)), std::nullopt) << type << " " << wrong;
    }
}

TEST(ValueTextTest, DatesAndTimesFitTheirWidthAndComeBack)
{
    const double firstOfYear = kLeapDay - 59 * kDay;
    const ThereAndBack rows[] = {
        {kLeapDay, format(20, 11), "29-FEB-2020", kLeapDay},
        {kNoon, format(20, 10), " 29-FEB-20", kLeapDay},
        {0, format(20, 11), "14-OCT-1582", 0},
        {0, format(20, 10), "**********", -1}, // 82 would be another century
        {-kDay, format(39, 10), "1582/10/13", -kDay},
        {kLeapDay, format(23, 8), "02/29/20", kLeapDay},
        {kLeapDay, format(38, 10), "29.02.2020", kLeapDay},
        {kLeapDay, format(39, 12), "  2020/02/29", kLeapDay},
        {kLeapDay, format(24, 7), "2020060", kLeapDay},
        {kLeapDay, format(24, 5), "20060", kLeapDay},
        {kLeapDay, format(28, 8), "FEB 2020", kLeapDay - 28 * kDay},
        {kLeapDay, format(29, 6), "1 Q 20", firstOfYear},
        {kLeapDay, format(30, 10), " 9 WK 2020", firstOfYear + 56 * kDay},
        {kLeapDay, format(26, 9), " SATURDAY", 7},
        {2, format(26, 4), " MON", 2},
        {kLeapDay, format(27, 8), "FEBRUARY", 2},
        {12, format(27, 3), "DEC", 12},
        {kNoon, format(22, 23, 2), "29-FEB-2020 12:30:15.25", kNoon},
        {kNoon, format(22, 20, 2), "29-FEB-2020 12:30:15", kNoon - 0.25},
        {kNoon, format(22, 17), "29-FEB-2020 12:30", kNoon - 15.25},
        {kLeapDay - 0.01, format(86, 21, 1), "2020-02-29 00:00:00.0", kLeapDay},
        {kLeapDay - 0.01, format(20, 11), "28-FEB-2020", kLeapDay - kDay},
        {kLeapDay + 0.001, format(86, 26, 6), "2020-02-29 00:00:00.001000", kLeapDay + 0.001},
        {kLeapDay - 4e-6, format(86, 25, 5), "2020-02-29 00:00:00.00000", kLeapDay},
        {3661.2, format(21, 10, 1), "01:01:01.2", 3661.2},
        {360000, format(21, 9), "100:00:00", 360000},
        {-30.5, format(21, 11, 1), "-00:00:30.5", -30.5},
        {59.99, format(21, 10, 1), "00:01:00.0", 60},
        {-90061, format(25, 11), "-1 01:01:01", -90061},
        {90061, format(25, 8), " 1 01:01", 90060},
        {3723.5, format(85, 7, 1), "62:03.5", 3723.5},
        {3723.5, format(85, 5, 0), "62:04", 3724},
        {247166327979, format(85, 13, 1), "4119438799:39", 247166327979},
        {-30, format(21, 5), "00:00", 0},
    };
    for (const auto& [value, how, text, back] : rows) {
        const std::string made = written(value, how);
        EXPECT_EQ(made, text);
        EXPECT_EQ(readBack(made, how).value_or(-1), back) << made;
    }
    EXPECT_EQ(readBack("1 march 1999", format(20, 0)), readBack("03/01/99", format(23, 0)));
    EXPECT_EQ(readBack("29.02.2100", format(38, 0)), std::nullopt);
    EXPECT_EQ(readBack("29-FEB-2020 24:00", format(22, 0)), std::nullopt);
}

TEST(ValueTextTest, TextsKeepTheirBytes)
{
    OBS units[2];
    ASSERT_EQ(FromString("Größe 12", format(kFormatString, 10), units), 0);
    EXPECT_EQ(std::string(units[0].text, sizeof(units)), "Größe 12      ");
    std::string hex(12, '?');
    ASSERT_EQ(ToString(units, format(kFormatHexString, 12), hex.data()), 0);
    EXPECT_EQ(hex, "4772C3B6C39F");
    ASSERT_EQ(FromString("4a4B  ", format(kFormatHexString, 6), units), 0);
    EXPECT_EQ(std::string(units[0].text, 8), "JK      ");
    EXPECT_NE(FromString("4a4", format(kFormatHexString, 3), units), 0);
    std::string blank = "??";
    EXPECT_NE(ToString(units, format(255, 2), blank.data()), 0);
    EXPECT_EQ(blank, "  ");
}

TEST(ValueTextTest, CombinationsAreSortedAsTheirFormatsTell)
{
    const auto key = [](double number, const char* text) {
        OBS units[2] = {};
        units[0].number = number;
        FromString(text, format(kFormatString, 1), &units[1]);
        return ObsVecMap::Key{{units[0]}, {units[1]}};
    };
    ObsVecMap map;
    map.Set(key(10, "a"), 1);
    map.Set(key(-2, "b"), 2);
    map.Set(key(-2, "a"), 3);
    map.Set(key(10, "a"), 4);
    std::vector<double> order;
    for (const auto& [combination, number] :
         map.Sort({format(kFormatNumber, 8), format(kFormatString, 1)}))
        order.push_back(number);
    EXPECT_EQ(order, (std::vector<double>{3, 2, 4}));
    EXPECT_EQ(*map.Find(key(-2, "b")), 2);
    EXPECT_EQ(map.Find(key(3, "b")), nullptr);
}
