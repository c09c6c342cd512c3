#include "support/Conversions.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstring>
#include <limits>
#include <locale>
#include <tuple>
#include <vector>

#include "VexaVariable.h"

namespace {

OBS number(double value)
{
    return {value};
}

/// A text as a case buffer holds it: blank filled, without a terminator.
std::vector<OBS> text(const std::string& value)
{
    std::vector<OBS> units((value.size() + 7) / 8 + 1);
    std::memset(units.data(), ' ', units.size() * sizeof(OBS));
    std::memcpy(units.data(), value.data(), value.size());
    return units;
}

std::string numberText(double value)
{
    const OBS obs = number(value);
    std::string out;
    ConvertObsValToStr(&obs, 0, out);
    return out;
}

/// What a locale might do to numbers: a decimal comma and grouped thousands.
class GroupedNumbers : public std::numpunct<char>
{
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(Conversions, NumbersHaveFifteenDigits)
{
    EXPECT_EQ(numberText(0.1), "0.1");
    EXPECT_EQ(numberText(1.0 / 3), "0.333333333333333");
    EXPECT_EQ(numberText(-2.5e-7), "-2.5e-07");
    EXPECT_EQ(numberText(std::numeric_limits<double>::lowest()), "-1.79769313486232e+308");
}

TEST(Conversions, TextIsCutAtTheWidthAndTrimmed)
{
    const std::vector<OBS> obs = text("abcdef  ghij");
    const std::pair<int, const char*> rows[] = {
        {1, "a"}, {6, "abcdef"}, {8, "abcdef"}, {9, "abcdef  g"}, {16, "abcdef  ghij"}};
    for (const auto& [width, expected] : rows) {
        std::string out;
        ConvertObsValToStr(obs.data(), width, out);
        EXPECT_EQ(out, expected) << width;
    }
}

TEST(Conversions, NothingIsOneNul)
{
    const OBS obs = number(1);
    std::string out[3] = {"earlier", "earlier", "earlier"};
    ConvertObsValToStr(nullptr, 0, out[0]);
    ConvertObsValToStr(nullptr, VEXA_Variable(4), out[1]);
    ConvertObsValToStr(&obs, -1, out[2]);
    for (const std::string& text : out)
        EXPECT_EQ(text, std::string(1, '\0'));
}

TEST(Conversions, VariableSaysHowWide)
{
    const std::vector<OBS> obs = text("abcdefgh");
    std::string out;
    VEXA_Variable variable(8);
    // Whatever is shown of it, a value is as wide as its variable.
    for (const int width : {8, 3, 0, 60000}) {
        variable.SetFormat({static_cast<std::uint16_t>(width), 1, 0});
        ConvertObsValToStr(obs.data(), variable, out);
        EXPECT_EQ(out, "abcdefgh") << width;
    }
    const OBS one = number(1.5);
    ConvertObsValToStr(&one, VEXA_Variable(0), out);
    EXPECT_EQ(out, "1.5");
}

TEST(Conversions, ReadUpToWhatIsNoNumber)
{
    const std::tuple<const char*, int, double> rows[] = {
        {"12abc", 12, 12}, {"abc", 0, 0},    {"", 0, 0},    {"  \t-7 8", -7, -7}, {"1.5x", 1, 1.5},
        {"+3", 3, 3},      {"1e3", 1, 1000}, {"1,5", 1, 1}, {"- 1", 0, 0},        {"0x10", 0, 0},
    };
    for (const auto& [text, integer, real] : rows) {
        EXPECT_EQ(String2Integer(text), integer) << text;
        EXPECT_EQ(String2Double(text), real) << text;
    }
    EXPECT_EQ(String2Integer("99999999999"), std::numeric_limits<int>::max());
}

TEST(Conversions, WriteSixDigits)
{
    EXPECT_EQ(Double2String(1234567.0), "1.23457e+06");
    EXPECT_EQ(Double2String(0.1), "0.1");
    EXPECT_EQ(Double2String(-100000), "-100000");
    EXPECT_EQ(Double2String(1e-5), "1e-05");
    EXPECT_EQ(Integer2String(std::numeric_limits<int>::min()), "-2147483648");
}

void expectPeriods()
{
    EXPECT_EQ(numberText(-1234.25), "-1234.25");
    EXPECT_EQ(Double2String(1234.5), "1234.5");
    EXPECT_EQ(Integer2String(1048576), "1048576");
    EXPECT_EQ(String2Double("1234.5"), 1234.5);
    EXPECT_EQ(String2Integer("1.024"), 1);
}

TEST(Conversions, LocalesMakeNoDifference)
{
    // The locale owns the facet.
    const std::locale earlier =
        std::locale::global(std::locale(std::locale::classic(), new GroupedNumbers)); // NOLINT
    expectPeriods();
    std::locale::global(earlier);
    const std::string numeric = std::setlocale(LC_NUMERIC, nullptr);
    if (std::setlocale(LC_NUMERIC, "de_DE.UTF-8") == nullptr)
        GTEST_SKIP() << "no locale with a decimal comma on this system";
    EXPECT_STREQ(std::localeconv()->decimal_point, ",");
    expectPeriods();
    std::setlocale(LC_NUMERIC, numeric.c_str());
}

} // namespace
