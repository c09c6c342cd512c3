#include "base/CivilTime.h"

#include <gtest/gtest.h>

namespace {

TEST(CivilTime, OriginOfTheHostLies141428DaysBefore1970)
{
    EXPECT_EQ(base::kHostEpoch, 12219379200.0);
    EXPECT_EQ(base::isoDate(-141428), "1582-10-14");
}

TEST(CivilTime, WritesDaysOfAllYears)
{
    struct Row
    {
        std::int64_t day;
        const char* text;
    };
    constexpr Row rows[] = {
        {0, "1970-01-01"},       {-1, "1969-12-31"},       {19782, "2024-02-29"},
        {2932896, "9999-12-31"}, {2932897, "10000-01-01"}, {-719162, "0001-01-01"},
        {-719528, "0000-01-01"}, {-719529, "-001-12-31"},  {11248737, "32767-12-31"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(base::isoDate(row.day), row.text) << row.day;
}

TEST(CivilTime, WritesClocks)
{
    EXPECT_EQ(base::isoClock(0), "00:00:00");
    EXPECT_EQ(base::isoClock(base::kMicrosecondsPerDay - 1), "23:59:59.999999");
    EXPECT_EQ(base::isoClock(100 * base::kMicrosecondsPerHour + 250000), "100:00:00.25");
    EXPECT_EQ(base::isoClock(36'000'000'000, base::Decimals::Six), "10:00:00.000000");
    EXPECT_EQ(base::isoClock(10, base::Decimals::Six), "00:00:00.000010");
}

TEST(CivilTime, DropsFractionsThatRoundUpToASecond)
{
    EXPECT_EQ(base::microsecondsOf(1.25), 1250000);
    EXPECT_EQ(base::microsecondsOf(0.0000015), 2);
    EXPECT_EQ(base::microsecondsOf(59.9999999), 59000000);
}

TEST(CivilTime, ReadsOnlyWholeDates)
{
    EXPECT_EQ(base::dayOfIso("1582-10-14"), base::kHostOrigin);
    EXPECT_TRUE(base::dayOfIso("0000-02-29"));
    for (const char* text :
         {"", "2024-1-31", "2024-02-30", "2023-02-29", "2024/01-31", "2024-01/31", "2024-00-10",
          "2024-01-00", "+024-01-31", "2024-01-31 ", "2024-01-3x"})
        EXPECT_FALSE(base::dayOfIso(text)) << text;
}

TEST(CivilTime, ReadsOnlyWholeClocks)
{
    EXPECT_EQ(base::clockOfIso("23:59:59"), base::kMicrosecondsPerDay - 1'000'000);
    EXPECT_EQ(base::clockOfIso("00:00:01.5"), 1'500'000);
    EXPECT_EQ(base::clockOfIso("00:00:00.000001"), 1);
    for (const char* text :
         {"", "24:00:00", "23:60:00", "23:59:60", "1:00:00", "10:00", "10:00:00.", "10:00:00,5",
          "10:00:00.1234567", "10:00:00.-1", "10-00-00"})
        EXPECT_FALSE(base::clockOfIso(text)) << text;
}

TEST(CivilTime, DividesDownwards)
{
    EXPECT_EQ(base::floorDivided(-1, 10), -1);
    EXPECT_EQ(base::floorDivided(-10, 10), -1);
    EXPECT_EQ(base::floorRest(-1, 10), 9);
    EXPECT_EQ(base::floorRest(-10, 10), 0);
    EXPECT_EQ(base::floorRest(INT64_MIN, 1000000), 224192); // the quotient times 1000000 overflows
}

} // namespace
