#include <gtest/gtest.h>

#include <cstdlib>

#include "Journal.h"
#include "MemorySource.h"
#include "data/HVSplitRawData.h"
#include "support/HVStatTracer.h"
#include "support/ScratchFolder.h"
#include "support/Tracing.h"

namespace {

// The tracer of the process reads its environment once, so this is a program of its own.
TEST(SystemFile, ACompleteFileIsCopiedWhileNobodyReadsIt)
{
    const ScratchFolder scratch;
    setenv("HV_STAT_DEBUG_DIR", scratch.path.c_str(), 1);
    setenv("HV_STAT_DEBUG_MAXCOUNT", "0", 1);
    const MemorySource source({numeric("x")}, {{1.0}});
    const std::unique_ptr<VEXA_InputCaseIterator> cases(source.MakeIterator(nullptr));
    cases->NextCase();
    HVSplitRawData data(source, {0}, {}, false);
    EXPECT_TRUE(data.GetSystemFile("early.sav"));
    EXPECT_FALSE(scratch.has("early.sav"));
    ASSERT_TRUE(data.FillDataFile(*cases));
    EXPECT_TRUE(data.GetSystemFile("copy.sav"));
    EXPECT_TRUE(scratch.has("copy.sav"));
    HostJournal::instance().clear();
    EXPECT_TRUE(data.GetSystemFile("missing/copy.sav"));
    const auto lines = HostJournal::instance().entries(HostJournal::Kind::Error);
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].text, "Cannot write system file.");
    EXPECT_EQ(lines[0].level, 2);
    data.CreateHVRawDataIter("c", kWeightRound, true, nullptr, false);
    EXPECT_TRUE(data.GetSystemFile("late.sav"));
    EXPECT_FALSE(scratch.has("late.sav"));
}

} // namespace
