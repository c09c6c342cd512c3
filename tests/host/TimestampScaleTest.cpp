#include "base/TimestampScale.h"

#include <chrono>
#include <cmath>
#include <cstdint>
#include <random>

#include <gtest/gtest.h>

#include "base/CivilTime.h"
#include "datafile/Duck.h"
#include "host/CaseFiles.h"
#include "support/ScratchFolder.h"

namespace {

using namespace casefiles;

__extension__ using Wide = __int128;

constexpr std::int64_t kMicro = 1000000;
constexpr auto kEpoch = static_cast<std::int64_t>(base::kHostEpoch);

std::int64_t startOf(int year)
{
    const auto days = std::chrono::sys_days(std::chrono::year(year) / 1 / 1).time_since_epoch();
    return std::int64_t{days.count()} * 86400 * kMicro;
}

/// Whether the double is a nearest one to the moment: in whole numbers, of millionths of 2 to the
/// power of -40.
bool isNearest(double seconds, std::int64_t microseconds)
{
    constexpr int kBits = 40;
    const auto exact = (Wide{microseconds} + Wide{kEpoch} * kMicro) << kBits;
    const auto held = static_cast<Wide>(std::ldexp(seconds, kBits)) * kMicro;
    const double step = std::nextafter(seconds, 1e300) - seconds;
    const auto half = static_cast<Wide>(std::ldexp(step, kBits - 1)) * kMicro;
    const Wide distance = held > exact ? held - exact : exact - held;
    return distance <= half;
}

} // namespace

/// Every stamp of a first and of a last second, and many between, go to a host's double, to that of
/// a row as the library computes it, and back.
TEST(TimestampScale, StampsSurviveTheHost)
{
    struct Span
    {
        const char* what;
        int from;
        int to;
        std::int64_t grain; ///< microseconds
        std::int64_t most;  ///< how far a stamp may be moved
    };
    const Span spans[] = {
        {"milliseconds", 1900, 3700, 1000, 0},
        {"ten microseconds", 1900, 3700, 10, 0},
        {"microseconds before 1718, near the host's origin", 1600, 1717, 1, 2},
        {"microseconds while doubles are 1.9 of them apart", 1900, 2126, 1, 2},
        {"microseconds while doubles are 3.8 of them apart", 2128, 2670, 1, 4},
    };
    std::mt19937_64 random(1);
    for (const Span& span : spans) {
        const std::int64_t first = startOf(span.from);
        const std::int64_t last = startOf(span.to) - span.grain;
        int bad = 0;
        const auto check = [&](std::int64_t stamp) {
            const double held = base::hostSeconds(stamp);
            const std::int64_t back = base::timestampOfRow(held - base::kHostEpoch);
            const bool isGood = isNearest(held, stamp) && std::abs(back - stamp) <= span.most &&
                                base::survivesHost(stamp) == (back == stamp);
            bad += isGood ? 0 : 1;
        };
        for (std::int64_t i = 0; i < kMicro / span.grain; ++i) {
            check(first + i * span.grain);
            check(last - i * span.grain);
        }
        std::uniform_int_distribution<std::int64_t> between(first / span.grain, last / span.grain);
        for (int i = 0; i < 200000; ++i)
            check(between(random) * span.grain);
        EXPECT_EQ(bad, 0) << span.what;
    }
    // A double of a row that no host has held, and one that was made from it.
    EXPECT_EQ(base::timestampOfRow(1330560000.123456), 1330560000123456);
    EXPECT_EQ(base::timestampOfRow((base::kHostEpoch + 1330560000.123450) - base::kHostEpoch),
              1330560000123450);
    EXPECT_EQ(base::timestampOfRow(base::rowSeconds(-1)), -1);
    EXPECT_TRUE(base::survivesHost(INT64_MAX)) << "infinite";
}

/// What the host writes, the engine reads by itself: the roundest stamp, not the nearest.
TEST(TimestampScale, AWrittenFileHasTheRoundestStamps)
{
    std::vector<Row> rows;
    for (std::int64_t i = 0; i < 1000; ++i)
        rows.push_back({base::hostSeconds(1715000000000000 + i * 1000)});
    const ScratchFolder scratch;
    writeSav(scratch.name("t.sav"), {variable("t", 0, {23, kFormatDateTimeYearFirst, 3})}, rows);
    duckdb_database database = datafile::duck::openInMemory();
    const std::unique_ptr<duckdb_database, void (*)(duckdb_database*)> closing(&database,
                                                                               &duckdb_close);
    datafile::duck::Connection connection(database);
    auto found =
        connection.query("SELECT count(*) FROM read_parquet('" + (scratch.path / "t.sav").string() +
                         "') WHERE epoch_us(t) % 1000 = 0");
    EXPECT_EQ(found.integer(0, 0), 1000);
}
