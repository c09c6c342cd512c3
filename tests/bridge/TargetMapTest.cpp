#include <algorithm>

#include "JNIException.h"
#include "bridge/JNITargetMap.h"
#include "support/JvmFixture.h"

namespace {
using Names = std::vector<std::string>;

/// "0-1" is explained by itself alone, "1-1" by itself and "2-1", "3-1" by nothing.
constexpr const char* kNetwork =
    R"({"targets": [{"series": "0-1", "predictors": [{"series": "0-1"}]},
                    {"series": "1-1", "predictors": [{"series": "2-1"}, {"series": "1-1"}]},
                    {"series": "3-1", "predictors": []}]})";

using TargetMapTest = JvmTest;

struct ListCase
{
    const char* name;
    bool (JNITargetMap::*list)(Names&);
    Names series;
};

const ListCase Lists[] = {
    {"targets", &JNITargetMap::GetAllTargets, {"0-1", "1-1", "3-1"}},
    {"predictors", &JNITargetMap::GetAllPredictors, {"0-1", "2-1", "1-1"}},
    {"ofTheirOwnPast", &JNITargetMap::GetArModelSeries, {"2-1"}},
    {"withoutInput", &JNITargetMap::GetTargetsWithoutInput, {"0-1"}},
};

/// Whether `series` is the beginning of what is there without a failure.
bool beginsAs(const Names& whole, const Names& series)
{
    return series.size() <= whole.size() && std::equal(series.begin(), series.end(), whole.begin());
}

template <class Work>
bool succeeds(Work work)
{
    try {
        return work();
    } catch (const JNIException&) {
        return false;
    }
}
} // namespace

TEST_F(TargetMapTest, ASeriesIsATargetOrAPredictorOrBoth)
{
    struct
    {
        const char* series;
        bool isTarget;
        bool isPredictor;
        bool isValid;
        bool isArModel;
    } const cases[] = {{"0-1", true, true, true, false},
                       {"2-1", false, true, true, true},
                       {"3-1", true, false, true, false},
                       {"9-1", false, false, false, false}};
    JNITargetMap map(kNetwork);
    for (const auto& expected : cases) {
        SCOPED_TRACE(expected.series);
        EXPECT_EQ(map.IsTarget(expected.series), expected.isTarget);
        EXPECT_EQ(map.IsPredictor(expected.series), expected.isPredictor);
        EXPECT_EQ(map.IsValidSeries(expected.series), expected.isValid);
        EXPECT_EQ(map.IsArModelSeries(expected.series), expected.isArModel);
    }
}

TEST_F(TargetMapTest, ListsAreAppended)
{
    JNITargetMap map(kNetwork);
    for (const ListCase& expected : Lists) {
        SCOPED_TRACE(expected.name);
        Names series = {"before"};
        EXPECT_TRUE((map.*expected.list)(series));
        EXPECT_EQ(Names(series.begin() + 1, series.end()), expected.series);
        EXPECT_EQ(series.front(), "before");
    }
}

TEST_F(TargetMapTest, ATextThatIsNoNetworkHasNoSeries)
{
    JNITargetMap map("no JSON");
    Names series;
    EXPECT_FALSE(map.IsValidSeries("0-1"));
    EXPECT_TRUE(map.GetAllTargets(series) && map.GetTargetsWithoutInput(series));
    EXPECT_TRUE(series.empty());
}

TEST_F(TargetMapTest, AFailureOfAnyCallIsToldAndLeavesWhatWasFound)
{
    for (const ListCase& expected : Lists) {
        SCOPED_TRACE(expected.name);
        JNITargetMap map(kNetwork);
        bool reached = true;
        int failures = 0;
        for (int number = 1; reached; ++number) {
            SCOPED_TRACE(number);
            Names series;
            jni().failAt(number, RecordingJni::Fault::OutOfMemory);
            const bool isWhole = succeeds([&] { return (map.*expected.list)(series); });
            reached = jni().endFault();
            failures += !isWhole;
            EXPECT_EQ(isWhole, !reached);
            EXPECT_TRUE(isWhole ? series == expected.series : beginsAs(expected.series, series));
        }
        EXPECT_GT(failures, 5);
    }
}
