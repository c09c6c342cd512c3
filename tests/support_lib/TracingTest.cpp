#include "support/Tracing.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "support/HVStatTracer.h"
#include "support/ScratchFolder.h"

namespace {

// The tracer of the process reads its environment once, so all of it is one case.
TEST(Tracing, EveryKindGoesToAFileOfItsOwn)
{
    const ScratchFolder scratch;
    setenv("HV_STAT_DEBUG_DIR", scratch.path.c_str(), 1);
    setenv("HV_STAT_DEBUG_MAXCOUNT", "0", 1);
    traceHVLFile("read()", "HvlJobText", "GetIterator");
    traceJSONFile("{}", "Result", "");
    traceXMLFile("<DataModel/>", "", "");
    WriteLog("started");
    EXPECT_EQ(scratch.read("HvlJobText_GetIterator.hvl"), "read()");
    EXPECT_EQ(scratch.read("Result.json"), "{}");
    EXPECT_EQ(scratch.read("unname.xml"), "<DataModel/>");
    EXPECT_EQ(scratch.read("hvinteg.log"), "started\n");
    traceHVLFile("write()", "HvlJobText", "GetIterator");
    EXPECT_EQ(scratch.read("HvlJobText_GetIterator.hvl"), "write()");
    setJobTextFilter([](const std::string& job) { return job + " filtered"; });
    traceHVLFile("write()", "HvlJobText", "GetIterator");
    traceJSONFile("{}", "Result", "");
    setJobTextFilter(nullptr);
    EXPECT_EQ(scratch.read("HvlJobText_GetIterator.hvl"), "write() filtered");
    EXPECT_EQ(scratch.read("Result.json"), "{}");
    EXPECT_EQ(HVTracer(), HVTracer());
    unsetenv("HV_STAT_DEBUG_DIR");
    EXPECT_TRUE(HVTracer()->canTrace());
}

} // namespace
