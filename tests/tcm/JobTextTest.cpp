#include "CFAppHost.h"
#include "support/JobFixture.h"
#include "tcm/TemporalJobText.h"
#include "tcm/TimeConversion.h"

// The lines of jobs on temporal causal models.

namespace {

using JobText = JobTest;

} // namespace

TEST_F(JobText, EscapesPathsAndReadsTimesInTheHostsLocale)
{
    EXPECT_EQ(TransformPath("C:\\a/b\\c d"), "file:///C:/a/b/c d");
    EXPECT_EQ(TransformPath("/tmp/x"), "file:////tmp/x");
    EXPECT_EQ(removeBackslash("a\\b\\\\c"), "abc");
    EXPECT_EQ(removeBackslash("\\\\"), "");
    // Without its backslash the quote would end the string.
    EXPECT_EQ(GenerateRtsdpConf("/a\"b"), "val rtsdpConf = {\"exportFutureFlag\":true}\n"
                                          "val rtsdpInConf = [{\"name\":\"JSON\","
                                          "\"uri\":\"file:////a\\\"b\"}]\n");
    EXPECT_EQ(modelLine("in", "TCM", "c:\\a \"b\""),
              "val in = [{\"name\":\"TCM\",\"uri\":\"file:///c:/a \\\"b\\\"\"}]\n");
    CFAppHost::getInstance()->setTimeLocale("pt_PT");
    EXPECT_EQ(GetToTimestampLambda("a b"),
              "val toTS = ctx => x => (\"a b\", toTimestamp(x.a b, \"yyyy-MM-dd HH:mm:ss\", "
              "\"yyyy-MM-dd\", \"HH:mm:ss\", \"pt_PT\", date(1970,1,1)))");
    CFAppHost::getInstance()->setTimeLocale("");
}
